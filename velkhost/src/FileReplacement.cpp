#include "FileReplacement.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <system_error>
#include <utility>

#include "velkhost/OfflineHost.h"

namespace velkhost::detail {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(const std::string& path, const std::string& reason) {
    throw ProjectError(path + ": cannot be written: " + reason);
}

// The file a write to `path` lands in: a link's target, else `path` itself.
fs::path fileBehind(const fs::path& path) {
    std::error_code error;
    if (!fs::is_symlink(path, error)) {
        return path;
    }
    const fs::path target = fs::canonical(path, error);
    return error ? path : target;
}

// A name beside `target` that no file has yet: "<name>.<8 hex digits>.tmp". The random part
// keeps two programs saving the same project at once from writing into the same file.
fs::path freshNameBeside(const fs::path& target) {
    std::random_device random;
    std::error_code error;
    for (;;) {
        static const char kDigits[] = "0123456789abcdef";
        std::string suffix = ".";
        for (unsigned bits = random(), i = 0; i < 8; ++i, bits >>= 4) {
            suffix.push_back(kDigits[bits & 0xF]);
        }
        fs::path candidate = target;
        candidate += suffix + ".tmp";
        if (!fs::exists(fs::symlink_status(candidate, error))) {
            return candidate;
        }
    }
}

bool isReadOnly(const fs::file_status& status) {
    return fs::exists(status) && !fs::is_directory(status) &&
           (status.permissions() & fs::perms::owner_write) == fs::perms::none;
}

// Removes the new file on every way out unless it has taken the old file's place.
class NewFile {
  public:
    explicit NewFile(fs::path path) : path_(std::move(path)) {}
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile() {
        if (!placed_) {
            std::error_code ignored;
            fs::remove(path_, ignored);
        }
    }

    const fs::path& path() const { return path_; }
    void placed() { placed_ = true; }

  private:
    fs::path path_;
    bool placed_ = false;
};

}  // namespace

void replaceFileContent(const std::string& path,
                        const std::function<void(std::ostream&)>& writeContent) {
    const fs::path target = fileBehind(path);
    std::error_code error;
    const fs::file_status old = fs::status(target, error);
    if (isReadOnly(old)) {
        fail(path, "the file is read-only");
    }

    NewFile written(freshNameBeside(target));
    std::ofstream out(written.path(), std::ios::binary | std::ios::trunc);
    if (!out.is_open()) {
        fail(path, "no new file can be made in its folder");
    }
    writeContent(out);
    out.close();
    if (!out) {
        fail(path, "writing the new file beside it failed");
    }
    if (fs::exists(old)) {
        // Keeps who may read and write the project; a file system without permissions keeps
        // its own, which is no reason to lose the save.
        fs::permissions(written.path(), old.permissions(), error);
    }
    fs::rename(written.path(), target, error);
    if (error) {
        fail(path, "the new file cannot take its place");
    }
    written.placed();
}

}  // namespace velkhost::detail
