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
    enum class Export {
        Environment,
        ReadGlobalI,
        ReadGlobalW,
        ReadGlobalStr,
        Exists,
        CheckOpen,
        Open,
        Close,
        Size,
        Seek,
        SingleSeek,
        SingleGet,
        SingleAdd,
        SingleReplace,
        Insert,
        SingleDelete,
        GetFigure,
        GetFigureObject,
        GetFigureInstance,
        GetNonCadObject,
        GetObjectDelete,
        GetObjectType,
        GetObjectName,
        GetObjectAttribute,
        FigureFindName,
        ObjectStart,
        ProcessCad,
        GetWnd,
        MessageBox,
    };
    struct Step {
        Export call;
        int a;  // for calls on a handle: the handle as recorded
        int b;
        int c;
        std::string text;
        int slot;  // the open that gave out the handle, or -1
    };

    static bool usesHandle(Export call);
    // The handle of a step: the one its open gave out this time, or the recorded one for a
    // handle no recorded open gave out.
    int handleOf(const Step& step) const;

    std::vector<Step> steps;
    std::vector<int> handles;  // by slot: the handle each open gave out this time
};

}  // namespace bench
