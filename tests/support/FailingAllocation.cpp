// The global operator new and delete replaced, so that an allocation can be made to fail. Nothing
// else lives in this file: code that allocates here would have the replaced operators inlined
// into it, and GCC then takes the free() inside operator delete for a mismatch with new.
#include "FailingAllocation.h"

#include <cstdlib>
#include <new>
#include <string>

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

bool copyingAllocates(const std::string& text) {
    static std::string copied;
    failAllocationAfter(0);
    try {
        copied = text;
    } catch (const std::bad_alloc&) {
    }
    const bool allocated = !allocationFailurePending();
    stopFailingAllocations();
    copied.clear();
    return allocated;
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
