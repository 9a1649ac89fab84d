// Runs a piece of work once for every allocation it makes, that allocation failing. Apart from
// FailingAllocation.cpp, which replaces operator new, so that this code is compiled without it.
#include <new>
#include <vector>

#include "ErrorLog.h"
#include "FailingAllocation.h"

namespace testsupport {

std::set<std::string> textsOfEveryFailingAllocation(const std::function<void()>& work) {
    std::set<std::string> seen;
    for (int skip = 0;; ++skip) {
        ErrorLogWatch log;
        failAllocationAfter(skip);
        try {
            work();
        } catch (const std::bad_alloc&) {
            // out of an object's own construction, before its boundary
        }
        const bool allSucceeded = allocationFailurePending();
        stopFailingAllocations();
        const std::vector<std::string> texts = log.texts();
        seen.insert(texts.begin(), texts.end());
        if (allSucceeded) {
            return seen;
        }
    }
}

}  // namespace testsupport
