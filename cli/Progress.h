// Progress of a long run over many items: one line on standard error, rewritten in place
// ("velk: operations 41000 of 100000 (41%)") and erased when the run ends. It shows only on a
// terminal, and only once a run has taken long enough to notice; into a pipe or a file, never.
// A run whose output goes to the terminal as it goes shows its progress by that output, so the
// line shows only while standard output goes elsewhere (velk ops big.json > list.txt).
#pragma once

#include <chrono>
#include <cstddef>
#include <iosfwd>
#include <string>

namespace velk {

class Progress {
  public:
    using Clock = std::chrono::steady_clock;

    // Progress of `total` items called `what` ("operations"), on standard error when that is a
    // terminal and standard output is not.
    Progress(std::string what, std::size_t total);
    // The same on `out`, shown when `terminal` is true, once `showAfter` has passed.
    Progress(std::string what, std::size_t total, std::ostream& out, bool terminal,
             Clock::duration showAfter);
    ~Progress();  // erases the line
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // One more item done.
    void advance() {
        if (++done % kItemsBetweenLooks == 0 && terminal) {
            look();
        }
    }

    // So many items done, for a run that counts in steps of its own (megabytes of a file).
    void reach(std::size_t count) {
        done = count;
        if (terminal) {
            look();
        }
    }

    // True when standard error is a terminal and standard output is not.
    static bool onTerminal();

  private:
    static constexpr std::size_t kItemsBetweenLooks = 256;

    void look();
    void show();

    std::string what;
    std::size_t total;
    std::size_t done = 0;
    std::ostream& out;
    bool terminal;
    Clock::time_point nextShow;
    std::size_t shownWidth = 0;
};

}  // namespace velk
