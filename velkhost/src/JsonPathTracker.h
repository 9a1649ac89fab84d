// Where a streaming JSON reader is in the document: the path of the value being read, for
// messages, and how deep lists and objects are nested in it.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "Project.h"

namespace velkhost::detail {

class JsonPathTracker {
  public:
    using Pointer = Json::json_pointer;

    // A list or object opens as the next value of the one it is in.
    void open(bool isList) {
        std::string place = nextPlace();
        frames.push_back({isList, 0, std::move(place), {}, {}});
    }
    void close() { frames.pop_back(); }
    // A key of the innermost object names the value that follows it; false when the object
    // had that key before.
    bool key(const std::string& name) {
        frames.back().key = name;
        return frames.back().keys.insert(name).second;
    }
    // A number, text, true, false or null was read.
    void scalar() {
        if (!frames.empty() && frames.back().isList) {
            ++frames.back().count;
        }
    }

    // How many lists and objects hold the value being read, itself included when it is one.
    std::size_t depth() const { return frames.size(); }

    // The innermost open list or object.
    Pointer path() const {
        Pointer at;
        for (std::size_t i = 1; i < frames.size(); ++i) {
            at /= frames[i].place;
        }
        return at;
    }
    // The value about to be read in the innermost list or object; the whole document when it
    // is no list or object.
    Pointer valuePath() const {
        if (frames.empty()) {
            return Pointer();
        }
        const Frame& innermost = frames.back();
        return path() / (innermost.isList ? std::to_string(innermost.count) : innermost.key);
    }

  private:
    struct Frame {
        bool isList;
        std::size_t count;           // a list's values so far
        std::string place;           // its key or index in the one it is in
        std::string key;             // an object's last key
        std::set<std::string> keys;  // an object's keys so far
    };

    std::string nextPlace() {
        if (frames.empty()) {
            return {};
        }
        Frame& parent = frames.back();
        return parent.isList ? std::to_string(parent.count++) : parent.key;
    }

    std::vector<Frame> frames;
};

}  // namespace velkhost::detail
