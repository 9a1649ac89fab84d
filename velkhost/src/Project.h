// The data of a project file, and reading and writing it as JSON.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
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
// `progress`, when given, hears how many bytes of the text have been read every megabyte and at
// the end.
Project parseProject(const std::string& text, const std::string& sourceName,
                     const LoadProgress& progress = LoadProgress());
std::string projectJson(const Project& project);

}  // namespace velkhost::detail
