// A session an add-on might run in the CAM application, written down as a transcript: every
// value it reads (globals, operations of every kind with their geometry and actions, the tool
// list, the expert form), then its edits and write-back, every message box and error record the
// library produced, and the stores' lines at the end. Run against a project and against its
// capture, the two transcripts must be the same.
#pragma once

#include <string>
#include <vector>

namespace capturetest {

using Transcript = std::vector<std::string>;

Transcript runScriptedSession();

// A folder of the test's own for capture files, emptied first.
std::string scratchFolder();

}  // namespace capturetest
