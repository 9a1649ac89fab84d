#include "FileReplacement.h"

#include <filesystem>
#include <ostream>
#include <random>
#include <streambuf>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/SaveFile.h"
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

// The new file: removed on every way out, an interruption of the program included, unless it
// has taken the old file's place.
class NewFile : public std::streambuf {
  public:
    explicit NewFile(fs::path path)
        : filePath(std::move(path)),
          removeOnInterrupt(filePath.string()),
          file(filePath.string()),
          buffer(kBufferSize) {
        setp(buffer.data(), buffer.data() + buffer.size());
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile() override {
        if (!inPlace) {
            std::error_code ignored;
            fs::remove(filePath, ignored);
        }
    }

    const fs::path& path() const { return filePath; }
    bool isOpen() const { return file.isOpen(); }
    // Everything written reaches the disk; false when a write or the flush failed.
    bool finish() { return sync() == 0 && file.syncAndClose(); }
    void placed() { inPlace = true; }

  protected:
    int_type overflow(int_type c) override {
        if (sync() != 0) {
            return traits_type::eof();
        }
        if (!traits_type::eq_int_type(c, traits_type::eof())) {
            *pptr() = traits_type::to_char_type(c);
            pbump(1);
        }
        return traits_type::not_eof(c);
    }
    int sync() override {
        const auto size = static_cast<std::size_t>(pptr() - pbase());
        if (failed || !file.write(pbase(), size)) {
            failed = true;
            return -1;
        }
        setp(buffer.data(), buffer.data() + buffer.size());
        return 0;
    }

  private:
    static constexpr std::size_t kBufferSize = std::size_t{1} << 16;

    fs::path filePath;
    platform::RemoveOnInterrupt removeOnInterrupt;
    platform::NewFileHandle file;
    std::vector<char> buffer;
    bool failed = false;
    bool inPlace = false;
};

// "<project name>.<8 hex digits>.tmp", the name freshNameBeside() gives.
bool isNewFileNameOf(const std::string& name, const std::string& projectName) {
    const std::size_t digitsAt = projectName.size() + 1;
    if (name.size() != digitsAt + 8 + 4 || name.compare(0, projectName.size(), projectName) != 0 ||
        name[projectName.size()] != '.' || name.compare(digitsAt + 8, 4, ".tmp") != 0) {
        return false;
    }
    return name.find_first_not_of("0123456789abcdef", digitsAt) == digitsAt + 8;
}

// New files of earlier saves of `target` that were killed before they could remove them.
void removeAbandonedNewFiles(const fs::path& target) {
    const std::string projectName = target.filename().string();
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    std::error_code error;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        if (isNewFileNameOf(it->path().filename().string(), projectName)) {
            platform::removeIfAbandoned(it->path().string());
        }
    }
}

}  // namespace

void replaceFileContent(const std::string& path,
                        const std::function<void(std::ostream&)>& writeContent) {
    const fs::path target = fileBehind(path);
    std::error_code error;
    const fs::file_status old = fs::status(target, error);
    if (isReadOnly(old)) {
        fail(path, "the file is read-only");
    }

    removeAbandonedNewFiles(target);
    NewFile written(freshNameBeside(target));
    if (!written.isOpen()) {
        fail(path, "no new file can be made in its folder");
    }
    std::ostream out(&written);
    writeContent(out);
    if (!out.flush() || !written.finish()) {
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
    platform::syncFolder(target.has_parent_path() ? target.parent_path().string() : ".");
}

}  // namespace velkhost::detail
