// What is worked out from a section's rows alone (names, numbers, types, never values), kept for
// every section that follows the same shared rows with as many entries: the sections of one kind
// then work it out once. A section with rows of its own works it out each time. Shared rows live
// as long as the process, so an answer kept for them never goes stale; a bounded number is kept.
#pragma once

#include <cstddef>
#include <map>
#include <tuple>

#include "model/EntryStore.h"

namespace VelkApi::detail {

template <typename Answer>
class SharedRowsMemo {
  public:
    // The answer for `entries`, worked out by work() when none is kept; `variant` tells apart
    // answers worked out differently from the same rows. It stays valid until the next call.
    template <typename Work>
    const Answer& of(const EntryStore& entries, int variant, Work&& work) {
        const void* rows = entries.sharedRows();
        if (rows == nullptr) {
            own = work();
            return own;
        }
        const Key key{rows, entries.size(), variant};
        if (const auto found = kept.find(key); found != kept.end()) {
            return found->second;
        }
        if (kept.size() >= kKeptBound) {
            kept.clear();
        }
        return kept.emplace(key, work()).first->second;
    }

  private:
    using Key = std::tuple<const void*, std::size_t, int>;
    static constexpr std::size_t kKeptBound = 256;

    std::map<Key, Answer> kept;
    Answer own;  // the last answer for rows of a section's own
};

}  // namespace VelkApi::detail
