// What a capture has gathered so far: the host's answers in the shape of an offline host
// project. The first answer about a thing is its starting state; later ones are the session's
// own doing and are not kept.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

namespace VelkApi::host::capture {

using Record = std::vector<std::string>;

// The object types whose objects the host finds by their figure or non-CAD number.
constexpr int kFigureObject = 20;
constexpr int kNonCadObject = 29;

struct CapturedStore {
    bool read = false;  // false: the store exists, but the session never opened it
    std::vector<Record> records;
};

// Array globals keep the elements the session reached, by their position from 1; the elements
// before them that it never reached are written as 0.
using CapturedGlobal =
    std::variant<int, double, std::string, std::map<int, int>, std::map<int, double>>;

struct CapturedObject {
    std::optional<int> type;
    std::optional<int> name;
    std::optional<int> attribute;
    std::optional<int> flags;
    std::optional<bool> deleted;
    std::optional<std::array<double, 3>> start;
};

struct CaptureSession {
    std::string path;
    std::map<std::string, std::string> environment;
    std::map<std::string, CapturedGlobal> globals;
    std::map<int, CapturedStore> stores;
    std::map<int, std::string> figures;
    std::map<int, CapturedObject> objects;
    std::set<std::string> missingExports;
};

// The project file of a capture, in the offline host's format; `taken` is the time of writing.
std::string captureProjectJson(const CaptureSession& session, const std::string& taken);

}  // namespace VelkApi::host::capture
