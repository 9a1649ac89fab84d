#include "FailingAllocation.h"

#include <cstdlib>
#include <new>

#include "ErrorLog.h"

namespace testsupport {

namespace {

int allocationsUntilFailure = -1;

}  // namespace

void failAllocationAfter(int skip) {
    allocationsUntilFailure = skip;
}

void stopFailingAllocations() {
    allocationsUntilFailure = -1;
}

bool allocationFailurePending() {
    return allocationsUntilFailure >= 0;
}

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

void* operator new(std::size_t size) {
    using testsupport::allocationsUntilFailure;
    if (allocationsUntilFailure == 0) {
        allocationsUntilFailure = -1;
        throw std::bad_alloc();
    }
    if (allocationsUntilFailure > 0) {
        --allocationsUntilFailure;
    }
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
