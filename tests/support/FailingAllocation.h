// Makes one upcoming allocation fail with std::bad_alloc, to drive the library's error paths.
// Only programs that link FailingAllocation.cpp replace the global operator new.
#pragma once

namespace testsupport {

// The allocation after `skip` more successful ones throws std::bad_alloc; later ones succeed.
void failAllocationAfter(int skip);
void stopFailingAllocations();
// True while the failure planned by failAllocationAfter has not happened yet.
bool allocationFailurePending();

}  // namespace testsupport
