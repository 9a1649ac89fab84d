#include "HostReplay.h"

#include <map>
#include <stdexcept>
#include <tuple>
#include <type_traits>

#include "ExportedFunctions.h"

namespace bench {

namespace {

// Takes none of the objects of a walk of the drawing.
int visitObject(const int* /*object*/, void* /*arg*/, const double* /*xyz*/, void* /*context*/) {
    constexpr int kRejected = -1;
    return kRejected;
}

int argument(const velkhost::HostCall& call, std::size_t i) {
    return i < call.numbers.size() ? call.numbers[i] : 0;
}

// The C types of parameter a recorded call can be made again with.
template <typename Parameter>
constexpr bool kBindable =
    std::is_same_v<Parameter, int> || std::is_same_v<Parameter, unsigned> ||
    std::is_same_v<Parameter, const char*> || std::is_same_v<Parameter, char*> ||
    std::is_same_v<Parameter, int*> || std::is_same_v<Parameter, double*> ||
    std::is_same_v<Parameter, void*> || std::is_same_v<Parameter, VelkCadCallback>;

// The arguments of a recorded call, by the C type of each parameter in turn: ints (and the
// unsigned style of a box) are the recorded numbers in order, the first of a call on an open
// store being the handle of this run; the first text is the recorded one, any further one "";
// a buffer, a status and the coordinates of a point are the replay's own; the callback of a walk
// takes no object; any other pointer is null.
class Arguments {
  public:
    Arguments(int first, int second, int third, const char* recordedText)
        : numbers{first, second, third}, text(recordedText) {}

    template <typename Parameter>
    Parameter next() {
        if constexpr (std::is_same_v<Parameter, int>) {
            return number();
        } else if constexpr (std::is_same_v<Parameter, unsigned>) {
            return static_cast<unsigned>(number());
        } else if constexpr (std::is_same_v<Parameter, const char*>) {
            return texts++ == 0 ? text : "";
        } else if constexpr (std::is_same_v<Parameter, char*>) {
            return buffer;
        } else if constexpr (std::is_same_v<Parameter, int*>) {
            return &status;
        } else if constexpr (std::is_same_v<Parameter, double*>) {
            return coordinates < 3 ? &point[coordinates++] : nullptr;
        } else if constexpr (std::is_same_v<Parameter, VelkCadCallback>) {
            return visitObject;
        } else {
            static_assert(std::is_same_v<Parameter, void*>);
            return nullptr;
        }
    }

  private:
    // The record keeps three numbers; any further one is 0.
    int number() { return nextNumber < 3 ? numbers[nextNumber++] : 0; }

    static char buffer[VelkApi::host::kLineBufferSize];  // a line, or a string global
    int numbers[3];
    const char* text;
    int nextNumber = 0;
    int texts = 0;
    int status = 0;
    double point[3] = {};
    int coordinates = 0;
};

char Arguments::buffer[VelkApi::host::kLineBufferSize];

template <typename Fn>
struct Signature;

template <typename Result, typename... Parameters>
struct Signature<Result (*)(Parameters...)> {
    static constexpr bool kReplayable = (kBindable<Parameters> && ...);

    template <auto Function>
    static Result call(Arguments& arguments) {
        // Braces take the arguments in order.
        std::tuple<Parameters...> values{arguments.next<Parameters>()...};
        return std::apply(Function, values);
    }
};

// The export that gives out the handles of the calls on an open store.
template <auto Function>
constexpr bool kOpensAStore = false;
template <>
constexpr bool kOpensAStore<&VelkMacroVdmOpen> = true;

// What the host answered, as a number to sum.
template <typename Result>
long long asNumber(Result result) {
    if constexpr (std::is_pointer_v<Result>) {
        return result != nullptr;
    } else {
        return static_cast<long long>(result);
    }
}

}  // namespace

template <auto Function, bool OnHandle>
long long HostReplay::replay(HostReplay& self, const Step& step) {
    using Call = Signature<decltype(Function)>;
    Arguments arguments(OnHandle ? self.handleOf(step) : step.a, step.b, step.c, step.text.c_str());
    if constexpr (std::is_void_v<decltype(Call::template call<Function>(arguments))>) {
        Call::template call<Function>(arguments);
        return 0;
    } else {
        const auto result = Call::template call<Function>(arguments);
        if constexpr (kOpensAStore<Function>) {
            self.handles[self.opened++] = result;
        }
        return asNumber(result);
    }
}

template <auto Function, bool OnHandle>
constexpr HostReplay::Replay HostReplay::replayOf() {
    if constexpr (Signature<decltype(Function)>::kReplayable) {
        return &HostReplay::replay<Function, OnHandle>;
    } else {
        return nullptr;
    }
}

HostReplay::HostReplay(const std::vector<velkhost::HostCall>& calls) {
    struct Known {
        Replay replay;  // null for a call that cannot be replayed
        bool onHandle;
        bool opensAStore;
    };
    // Every export but the array globals, whose elements the call record does not keep.
#define BENCH_REPLAY(Symbol, Name, Result, Parameters) \
    {#Symbol, {replayOf<&Symbol, false>(), false, kOpensAStore<&Symbol>}},
#define BENCH_REPLAY_ON_HANDLE(Symbol, Name, Result, Parameters) \
    {#Symbol, {replayOf<&Symbol, true>(), true, false}},
    // clang-format off
    static const std::map<std::string, Known> kExports = {
        VELKAPI_HOST_WINDOW_EXPORTS(BENCH_REPLAY)
        VELKAPI_HOST_GLOBAL_EXPORTS(BENCH_REPLAY)
        VELKAPI_HOST_STORE_EXPORTS(BENCH_REPLAY)
        VELKAPI_HOST_STORE_HANDLE_EXPORTS(BENCH_REPLAY_ON_HANDLE)
        VELKAPI_HOST_DRAWING_EXPORTS(BENCH_REPLAY)
        VELKAPI_HOST_FALLBACK_EXPORTS(BENCH_REPLAY)};
    // clang-format on
#undef BENCH_REPLAY
#undef BENCH_REPLAY_ON_HANDLE
    // The host gives out a new handle at every open: the first new handle used after an open
    // is the one that open gave out.
    std::map<int, int> slotOfHandle;
    int openedSlot = -1;
    steps.reserve(calls.size());
    for (const velkhost::HostCall& call : calls) {
        const auto found = kExports.find(call.exportName);
        if (found == kExports.end() || !found->second.replay) {
            throw std::invalid_argument("cannot replay a call of " + call.exportName);
        }
        const Known& known = found->second;
        Step step{known.replay,      argument(call, 0), argument(call, 1),
                  argument(call, 2), call.text,         -1};
        if (known.opensAStore) {
            openedSlot = static_cast<int>(handles.size());
            handles.push_back(0);
        } else if (known.onHandle) {
            const auto given = slotOfHandle.find(step.a);
            if (given != slotOfHandle.end()) {
                step.slot = given->second;
            } else if (openedSlot >= 0) {
                step.slot = slotOfHandle[step.a] = openedSlot;
                openedSlot = -1;
            }
        }
        steps.push_back(std::move(step));
    }
}

int HostReplay::handleOf(const Step& step) const {
    return step.slot >= 0 ? handles[static_cast<std::size_t>(step.slot)] : step.a;
}

long long HostReplay::run() {
    long long sum = 0;
    opened = 0;
    for (const Step& step : steps) {
        sum += step.replay(*this, step);
    }
    return sum;
}

}  // namespace bench
