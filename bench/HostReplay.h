// Host calls recorded once through the offline host's call record, replayed later against the
// offline host's exported functions without the library: the host's own share of a piece of
// the library's work, the floor under what the library can take.
#pragma once

#include <velkhost/OfflineHost.h>

#include <string>
#include <vector>

namespace bench {

class HostReplay {
  public:
    // Throws std::invalid_argument for a call it cannot replay (one that hands the host an
    // array or a double, which the call record does not keep). A walk of the drawing is
    // replayed with a callback that takes no object, so that the host visits every object.
    explicit HostReplay(const std::vector<velkhost::HostCall>& calls);

    // Makes every call again, in order, with the same arguments; handles are the ones the
    // host gives out this time. Returns the sum of the results, so that nothing is left out.
    long long run();

    std::size_t size() const { return steps.size(); }

  private:
    struct Step;
    // Makes the call of a step again; its result as a number.
    using Replay = long long (*)(HostReplay& self, const Step& step);
    struct Step {
        Replay replay;
        int a;  // for calls on a handle: the handle as recorded
        int b;
        int c;
        std::string text;
        int slot;  // the open that gave out the handle, or -1
    };

    // The call of `Function` again from its record; `OnHandle`: its first int is the handle of
    // an open store.
    template <auto Function, bool OnHandle>
    static long long replay(HostReplay& self, const Step& step);
    template <auto Function, bool OnHandle>
    static constexpr Replay replayOf();

    // The handle of a step: the one its open gave out this time, or the recorded one for a
    // handle no recorded open gave out.
    int handleOf(const Step& step) const;

    std::vector<Step> steps;
    std::vector<int> handles;  // by slot: the handle each open gave out this time
    std::size_t opened = 0;    // the opens made so far in this run
};

}  // namespace bench
