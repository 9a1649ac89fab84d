#include "Progress.h"

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <utility>

#if defined(_WIN32)
#include <io.h>
#else
#include <unistd.h>
#endif

namespace velk {

namespace {

// Runs shorter than this show nothing; a shown line is rewritten at most this often.
constexpr auto kShowAfter = std::chrono::milliseconds(500);
constexpr auto kShowEvery = std::chrono::milliseconds(100);

}  // namespace

bool Progress::onTerminal() {
#if defined(_WIN32)
    return _isatty(_fileno(stderr)) != 0 && _isatty(_fileno(stdout)) == 0;
#else
    return isatty(fileno(stderr)) != 0 && isatty(fileno(stdout)) == 0;
#endif
}

Progress::Progress(std::string whatItems, std::size_t totalItems)
    : Progress(std::move(whatItems), totalItems, std::cerr, onTerminal(), kShowAfter) {}

Progress::Progress(std::string whatItems, std::size_t totalItems, std::ostream& stream,
                   bool isTerminal, Clock::duration showAfter)
    : what(std::move(whatItems)),
      total(totalItems),
      out(stream),
      terminal(isTerminal),
      nextShow(Clock::now() + showAfter) {}

Progress::~Progress() {
    if (shownWidth > 0) {
        out << '\r' << std::string(shownWidth, ' ') << '\r' << std::flush;
    }
}

void Progress::look() {
    const Clock::time_point now = Clock::now();
    if (now >= nextShow) {
        show();
        nextShow = now + kShowEvery;
    }
}

void Progress::show() {
    const std::size_t percent = total == 0 ? 100 : done * 100 / total;
    const std::string line = "velk: " + what + " " + std::to_string(done) + " of " +
                             std::to_string(total) + " (" + std::to_string(percent) + "%)";
    out << '\r' << line;
    if (line.size() < shownWidth) {
        out << std::string(shownWidth - line.size(), ' ');
    }
    out << std::flush;
    shownWidth = std::max(shownWidth, line.size());
}

}  // namespace velk
