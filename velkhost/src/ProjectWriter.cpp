// Writes a project file straight into one text, member by member: environment and globals by
// name, stores by number, two-space indented, each member and list item on a line of its own.
// Texts are written as their Windows-1252 characters in UTF-8 with the JSON escapes of control
// characters, quotes and backslashes; numbers in the JSON library's own form, so that a double
// reads back as the same double.
#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "Project.h"
#include "WindowsCodePage.h"

namespace velkhost::detail {

namespace {

// Without a sink the whole text collects in the writer; with one, it goes to the sink a block
// at a time.
class ProjectWriter {
  public:
    explicit ProjectWriter(const TextSink* sink) : sink_(sink) {}

    std::string write(const Project& project) {
        out_.reserve(sink_ != nullptr ? kBlockSize + kBlockSize / 4 : expectedSize(project));
        open('{');
        environment(project.environment);
        globals(project.globals);
        stores(project.stores);
        if (!project.cad.empty()) {
            drawing(project.cad);
        }
        if (project.capture) {
            capture(*project.capture);
        }
        close('}');
        out_ += '\n';
        if (sink_ != nullptr) {
            flush();
        }
        return std::move(out_);
    }

  private:
    static constexpr std::size_t kBlockSize = std::size_t{1} << 20;

    void flush() {
        (*sink_)(out_);
        out_.clear();
    }

    // Room for the stores' lines with their quotes, commas and indent, which are most of a file.
    static std::size_t expectedSize(const Project& project) {
        constexpr std::size_t kAroundALine = 12;
        constexpr std::size_t kAroundARecord = 16;
        std::size_t size = 4096;
        for (const auto& [number, records] : project.stores) {
            for (const Record& record : records) {
                size += kAroundARecord;
                for (const std::string& line : record) {
                    size += line.size() + kAroundALine;
                }
            }
        }
        return size;
    }

    void environment(const Environment& environment) {
        key("environment");
        open('{');
        for (const auto& [name, value] : environment) {
            key(name);
            text(value);
        }
        close('}');
    }

    void globals(const Globals& globals) {
        key("globals");
        open('{');
        for (const auto& [name, value] : globals) {
            key(name);
            std::visit([this](const auto& held) { global(held); }, value);
        }
        close('}');
    }

    void global(int value) { out_ += std::to_string(value); }
    void global(double value) { number(value); }
    void global(const std::string& value) { text(value); }
    template <typename Number>
    void global(const std::vector<Number>& values) {
        open('[');
        for (const Number value : values) {
            item();
            global(value);
        }
        close(']');
    }

    void stores(const Stores& stores) {
        key("stores");
        open('{');
        for (const auto& [number, records] : stores) {
            key(std::to_string(number));
            open('[');
            for (const Record& record : records) {
                item();
                open('[');
                for (const std::string& line : record) {
                    item();
                    text(line);
                }
                close(']');
            }
            close(']');
        }
        close('}');
    }

    void drawing(const Drawing& drawing) {
        key("cad");
        open('{');
        key("figures");
        open('[');
        for (const auto& [number, figure] : drawing.figures) {
            item();
            open('{');
            integerMember("number", number);
            key("name");
            text(figure.name);
            close('}');
        }
        close(']');
        key("objects");
        open('[');
        for (const auto& [number, object] : drawing.objects) {
            item();
            drawingObject(object);
        }
        close(']');
        close('}');
    }

    void drawingObject(const CadObject& object) {
        open('{');
        integerMember("number", object.number);
        integerMember("type", object.type);
        integerMember("name", object.name);
        integerMember("attribute", object.attribute);
        key("start");
        open('[');
        for (const double coordinate : object.start) {
            item();
            number(coordinate);
        }
        close(']');
        integerMember("flags", object.flags);
        key("deleted");
        out_ += object.deleted ? "true" : "false";
        close('}');
    }

    void capture(const CaptureInfo& capture) {
        key("capture");
        open('{');
        key("taken");
        text(capture.taken);
        key("library");
        text(capture.library);
        key("missingExports");
        open('[');
        for (const std::string& name : capture.missingExports) {
            item();
            text(name);
        }
        close(']');
        close('}');
    }

    void integerMember(std::string_view name, int value) {
        key(name);
        out_ += std::to_string(value);
    }

    // An object or list: "{}" when empty, else each member on a line of its own one level
    // deeper and the closing bracket on a line of its own.
    void open(char bracket) {
        out_ += bracket;
        emptyContainers_.push_back(true);
    }

    void item() {
        if (sink_ != nullptr && out_.size() >= kBlockSize) {
            flush();
        }
        out_ += emptyContainers_.back() ? "\n" : ",\n";
        emptyContainers_.back() = false;
        out_.append(2 * emptyContainers_.size(), ' ');
    }

    void key(std::string_view name) {
        item();
        text(name);
        out_ += ": ";
    }

    void close(char bracket) {
        const bool empty = emptyContainers_.back();
        emptyContainers_.pop_back();
        if (!empty) {
            out_ += '\n';
            out_.append(2 * emptyContainers_.size(), ' ');
        }
        out_ += bracket;
    }

    void number(double value) { out_ += Json(value).dump(); }

    // Runs of plain ASCII, most of a text, go in whole; other bytes one by one.
    void text(std::string_view bytes) {
        out_ += '"';
        std::size_t runStart = 0;
        for (std::size_t at = 0; at < bytes.size(); ++at) {
            const auto code = static_cast<unsigned char>(bytes[at]);
            if (code >= 0x20 && code < 0x80 && code != '"' && code != '\\') {
                continue;
            }
            out_.append(bytes, runStart, at - runStart);
            runStart = at + 1;
            if (code >= 0x80) {
                VelkApi::host::codepage::appendUtf8(VelkApi::host::codepage::characterOf(code),
                                                    out_);
            } else {
                escaped(bytes[at]);
            }
        }
        out_.append(bytes, runStart, std::string_view::npos);
        out_ += '"';
    }

    void escaped(char character) {
        switch (character) {
            case '"':
                out_ += "\\\"";
                return;
            case '\\':
                out_ += "\\\\";
                return;
            case '\b':
                out_ += "\\b";
                return;
            case '\f':
                out_ += "\\f";
                return;
            case '\n':
                out_ += "\\n";
                return;
            case '\r':
                out_ += "\\r";
                return;
            case '\t':
                out_ += "\\t";
                return;
            default:
                break;
        }
        static constexpr char kHexDigits[] = "0123456789abcdef";  // the other controls
        out_ += "\\u00";
        out_ += kHexDigits[character >> 4];
        out_ += kHexDigits[character & 0xF];
    }

    const TextSink* sink_;
    std::string out_;
    std::vector<bool> emptyContainers_;  // one per open object or list, innermost last
};

}  // namespace

std::string projectJson(const Project& project) {
    return ProjectWriter(nullptr).write(project);
}

void writeProject(const Project& project, const TextSink& sink) {
    ProjectWriter(&sink).write(project);
}

}  // namespace velkhost::detail
