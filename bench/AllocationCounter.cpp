#include "AllocationCounter.h"

#include <cstdlib>
#include <new>

namespace {

// The benchmarks run on one thread; the counts need no lock.
bench::Allocations counted;
std::size_t live = 0;

// Each block carries its size in front of the memory handed out, so that a delete without a
// size can take it back off the live bytes. The header keeps malloc's alignment.
constexpr std::size_t kHeader = alignof(std::max_align_t);

void* allocate(std::size_t size) {
    ++counted.count;
    counted.bytes += size;
    live += size;
    if (auto* block = static_cast<unsigned char*>(std::malloc(kHeader + size))) {
        *reinterpret_cast<std::size_t*>(block) = size;
        return block + kHeader;
    }
    throw std::bad_alloc();
}

void release(void* memory) noexcept {
    if (memory == nullptr) {
        return;
    }
    unsigned char* block = static_cast<unsigned char*>(memory) - kHeader;
    live -= *reinterpret_cast<std::size_t*>(block);
    std::free(block);
}

}  // namespace

namespace bench {

Allocations allocationsSoFar() {
    return counted;
}

std::size_t liveBytes() {
    return live;
}

}  // namespace bench

void* operator new(std::size_t size) {
    return allocate(size);
}
void* operator new[](std::size_t size) {
    return allocate(size);
}
void operator delete(void* memory) noexcept {
    release(memory);
}
void operator delete[](void* memory) noexcept {
    release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    release(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    release(memory);
}
