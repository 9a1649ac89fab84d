// Writes a project file straight into one text, member by member: environment and globals by
// name, stores by number, in the text form of project files (ProjectJsonWriter.h).
#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "Project.h"
#include "ProjectJsonWriter.h"

namespace velkhost::detail {

namespace {

// Without a sink the whole text collects in the writer; with one, it goes to the sink a block
// at a time.
class ProjectWriter {
  public:
    explicit ProjectWriter(const TextSink* blockSink) : sink(blockSink) {}

    std::string write(const Project& project) {
        out.reserve(sink != nullptr ? kBlockSize + kBlockSize / 4 : expectedSize(project));
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
        out += '\n';
        if (sink != nullptr) {
            flush();
        }
        return std::move(out);
    }

  private:
    static constexpr std::size_t kBlockSize = std::size_t{1} << 20;

    void flush() {
        (*sink)(out);
        out.clear();
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

    void global(int value) { json.integer(value); }
    void global(double value) { json.number(value); }
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
            json.number(coordinate);
        }
        close(']');
        integerMember("flags", object.flags);
        key("deleted");
        json.boolean(object.deleted);
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
        json.integer(value);
    }

    void open(char bracket) { json.open(bracket); }
    void close(char bracket) { json.close(bracket); }
    void text(std::string_view bytes) { json.text(bytes); }

    // A full block goes to the sink before the next member or item.
    void item() {
        flushFullBlock();
        json.item();
    }

    void key(std::string_view name) {
        flushFullBlock();
        json.key(name);
    }

    void flushFullBlock() {
        if (sink != nullptr && out.size() >= kBlockSize) {
            flush();
        }
    }

    const TextSink* sink;
    std::string out;
    VelkApi::projectjson::Writer json{out};
};

}  // namespace

std::string projectJson(const Project& project) {
    return ProjectWriter(nullptr).write(project);
}

void writeProject(const Project& project, const TextSink& sink) {
    ProjectWriter(&sink).write(project);
}

}  // namespace velkhost::detail
