// Pocket depth steps, an example add-on: every pocket operation of a store takes a depth step
// of half its tool's diameter, rounded down to 0.1 mm, and carries an action after it that
// names the change. Running it again changes nothing.
#pragma once

#include <string>
#include <vector>

namespace pocketsteps {

// A pocket whose depth step the add-on set.
struct Change {
    int operation = 0;  // its number in the store
    double toolDiameter = 0.0;
    double depthStep = 0.0;  // the depth step it has now
};

struct Report {
    std::vector<Change> changed;
    // Pockets whose tool has no diameter: they are left as they were.
    std::vector<int> withoutToolDiameter;
};

// The depth step for a tool of this diameter: half of it, rounded down to 0.1 mm.
double depthStepFor(double toolDiameter);

// The command of the action that names the change: "(depth step 5 mm: half the 10 mm tool)".
std::string actionText(const Change& change);

// Sets the depth step of every pocket of the store from its tool and writes the pockets back.
// A pocket that has the right depth step and action already is not written again.
Report setPocketDepthSteps(int store);

}  // namespace pocketsteps
