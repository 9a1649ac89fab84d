// The catch-log-return boundary of every public operation of the operation and section classes:
// the body runs; whatever it throws is written as one error record and the operation returns
// its neutral result instead. Each operation states its log text once, at its call.
//
// The text is either a fixed string, or a callable that receives the exception's text ("" for
// an exception that is not a std::exception) for operations whose record names the reason, or
// that builds the text from the operation's arguments only when it is needed.
#pragma once

#include <exception>
#include <string>
#include <type_traits>

#include <velkapi/LogFile.h>

namespace VelkApi::detail {

template <typename Describe>
void logFailure(const Describe& describe, const char* reason) {
    try {
        if constexpr (std::is_invocable_v<const Describe&, const char*>) {
            LogFile::instance().error(describe(reason));
        } else if constexpr (std::is_invocable_v<const Describe&>) {
            LogFile::instance().error(describe());
        } else {
            LogFile::instance().error(describe);
        }
    } catch (...) {
        // Logging never raises.
    }
}

// Runs body(); on an exception logs and returns `neutral`.
template <typename Result, typename Describe, typename Body>
Result guarded(Result neutral, const Describe& describe, Body&& body) {
    try {
        return body();
    } catch (const std::exception& e) {
        logFailure(describe, e.what());
    } catch (...) {
        logFailure(describe, "");
    }
    return neutral;
}

// The same for operations without a result.
template <typename Describe, typename Body>
void guarded(const Describe& describe, Body&& body) {
    try {
        body();
    } catch (const std::exception& e) {
        logFailure(describe, e.what());
    } catch (...) {
        logFailure(describe, "");
    }
}

}  // namespace VelkApi::detail
