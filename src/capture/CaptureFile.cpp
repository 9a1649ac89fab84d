// Writes a capture in the text form of the offline host's project files (ProjectJsonWriter.h),
// with its members in the order the offline host saves them (names in byte order, numbers in
// ascending order), so that loading and saving a capture leaves it as it is.
#include <cmath>
#include <map>
#include <string>
#include <variant>

#include "ProjectJsonWriter.h"
#include "capture/CaptureSession.h"

namespace VelkApi::host::capture {

namespace {

// The figures the session asked about, and a stand-in name ("#<number>") for a figure the session
// reached only through its objects, since a figure object needs a figure of its own.
std::map<int, std::string> figuresOf(const CaptureSession& session) {
    std::map<int, std::string> figures = session.figures;
    for (const auto& [number, found] : session.objects) {
        if (found.type == kFigureObject && found.name) {
            figures.try_emplace(*found.name, "#" + std::to_string(*found.name));
        }
    }
    return figures;
}

class CaptureWriter {
  public:
    explicit CaptureWriter(std::string& out) : json(out) {}

    void write(const CaptureSession& session, const std::string& taken) {
        json.open('{');
        environment(session);
        globals(session);
        stores(session);
        if (!session.figures.empty() || !session.objects.empty()) {
            drawing(session);
        }
        capture(session, taken);
        json.close('}');
    }

  private:
    void put(int value) { json.integer(value); }

    // JSON has no infinities or NaN: a capture writes them as 0.0.
    void put(double value) { json.number(std::isfinite(value) ? value : 0.0); }

    void put(const std::string& text) { json.text(text); }

    void environment(const CaptureSession& session) {
        json.key("environment");
        json.open('{');
        for (const auto& [name, text] : session.environment) {
            json.key(name);
            json.text(text);
        }
        json.close('}');
    }

    void globals(const CaptureSession& session) {
        json.key("globals");
        json.open('{');
        for (const auto& [name, global] : session.globals) {
            json.key(name);
            std::visit([this](const auto& held) { put(held); }, global);
        }
        json.close('}');
    }

    // The elements the session reached, by their position from 1, and 0 for those before them
    // that it never reached.
    template <typename Number>
    void put(const std::map<int, Number>& reached) {
        json.open('[');
        int position = 1;
        for (const auto& [index, value] : reached) {
            for (; position < index; ++position) {
                json.item();
                put(Number());
            }
            json.item();
            put(value);
            position = index + 1;
        }
        json.close(']');
    }

    void stores(const CaptureSession& session) {
        json.key("stores");
        json.open('{');
        for (const auto& [number, store] : session.stores) {
            json.key(std::to_string(number));
            json.open('[');
            for (const Record& record : store.records) {
                json.item();
                json.open('[');
                for (const std::string& line : record) {
                    json.item();
                    json.text(line);
                }
                json.close(']');
            }
            json.close(']');
        }
        json.close('}');
    }

    void drawing(const CaptureSession& session) {
        json.key("cad");
        json.open('{');
        json.key("figures");
        json.open('[');
        for (const auto& [number, name] : figuresOf(session)) {
            json.item();
            json.open('{');
            json.key("number");
            put(number);
            json.key("name");
            json.text(name);
            json.close('}');
        }
        json.close(']');
        json.key("objects");
        json.open('[');
        for (const auto& [number, found] : session.objects) {
            json.item();
            object(number, found);
        }
        json.close(']');
        json.close('}');
    }

    void object(int number, const CapturedObject& found) {
        json.open('{');
        json.key("number");
        put(number);
        json.key("type");
        put(found.type.value_or(0));
        json.key("name");
        put(found.name.value_or(0));
        json.key("attribute");
        put(found.attribute.value_or(0));
        json.key("start");
        json.open('[');
        for (const double coordinate : found.start.value_or(std::array<double, 3>{})) {
            json.item();
            put(coordinate);
        }
        json.close(']');
        json.key("flags");
        put(found.flags.value_or(1));
        json.key("deleted");
        json.boolean(found.deleted.value_or(false));
        json.close('}');
    }

    void capture(const CaptureSession& session, const std::string& taken) {
        json.key("capture");
        json.open('{');
        json.key("taken");
        json.text(taken);
        json.key("library");
        json.text(VELKAPI_VERSION);
        json.key("missingExports");
        json.open('[');
        for (const std::string& name : session.missingExports) {
            json.item();
            json.text(name);
        }
        json.close(']');
        json.close('}');
    }

    projectjson::Writer json;
};

}  // namespace

std::string captureProjectJson(const CaptureSession& session, const std::string& taken) {
    std::string out;
    CaptureWriter(out).write(session, taken);
    out += '\n';
    return out;
}

}  // namespace VelkApi::host::capture
