#include "AllocationCounter.h"

#include <cstdlib>
#include <new>

namespace {

// The benchmarks run on one thread; the counts need no lock.
bench::Allocations counted;

void* allocate(std::size_t size) {
    ++counted.count;
    counted.bytes += size;
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

}  // namespace

namespace bench {

Allocations allocationsSoFar() {
    return counted;
}

}  // namespace bench

void* operator new(std::size_t size) {
    return allocate(size);
}
void* operator new[](std::size_t size) {
    return allocate(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}
