// The data of a project file, and reading and writing it as JSON.
#pragma once

#include <functional>
#include <map>
#include <string>

#include <nlohmann/json.hpp>

#include "Drawing.h"
#include "velkhost/OfflineHost.h"

namespace velkhost::detail {

using Json = nlohmann::ordered_json;
using Environment = std::map<std::string, std::string, std::less<>>;
using Globals = std::map<std::string, GlobalValue, std::less<>>;
using Stores = std::map<int, Records>;

struct Project {
    Environment environment;
    Globals globals;
    Stores stores;
    Drawing cad;
};

// Throws ProjectError naming `sourceName`, the JSON path and what was expected there.
Project parseProject(const std::string& text, const std::string& sourceName);
std::string projectJson(const Project& project);

}  // namespace velkhost::detail
