// The data of a project file, and reading and writing it as JSON.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "Drawing.h"
#include "velkhost/OfflineHost.h"

namespace velkhost::detail {

using Json = nlohmann::ordered_json;
using Environment = std::map<std::string, std::string, std::less<>>;
using Globals = std::map<std::string, GlobalValue, std::less<>>;
using Stores = std::map<int, Records>;

// Where a captured project came from; a project written by hand has none.
struct CaptureInfo {
    std::string taken;
    std::string library;
    std::vector<std::string> missingExports;
};

struct Project {
    Environment environment;
    Globals globals;
    Stores stores;
    Drawing cad;
    std::optional<CaptureInfo> capture;
};

// Throws ProjectError naming `sourceName`, the JSON path and what was expected there.
Project parseProject(const std::string& text, const std::string& sourceName);
// The same from the file at `path`; `progress`, when given, hears how many of its bytes have
// been read every megabyte and at the end.
Project readProjectFile(const std::string& path, const LoadProgress& progress);
std::string projectJson(const Project& project);
// The same text handed to `sink` in blocks of about a megabyte, so that a large project is never
// held whole.
using TextSink = std::function<void(std::string_view)>;
void writeProject(const Project& project, const TextSink& sink);

}  // namespace velkhost::detail
