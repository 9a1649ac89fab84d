// Makes one upcoming allocation fail with std::bad_alloc, to drive the library's error paths.
// Only programs that link FailingAllocation.cpp replace the global operator new.
#pragma once

#include <functional>
#include <set>
#include <string>

namespace testsupport {

// The allocation after `skip` more successful ones throws std::bad_alloc; later ones succeed.
void failAllocationAfter(int skip);
void stopFailingAllocations();
// True while the failure planned by failAllocationAfter has not happened yet.
bool allocationFailurePending();
// Whether copying `text` allocates: where the runtime's strings share their characters (the
// MinGW runtime's do), a copy takes none.
bool copyingAllocates(const std::string& text);

// Runs `work` once for every allocation it makes, that allocation failing, and gathers the error
// log texts of all the runs. A std::bad_alloc out of `work` (an object's own construction,
// before its boundary) ends that run.
std::set<std::string> textsOfEveryFailingAllocation(const std::function<void()>& work);

}  // namespace testsupport
