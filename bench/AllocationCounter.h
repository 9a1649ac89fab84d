// Counts the heap allocations of the benchmark program: its own operator new counts every
// allocation and its size, the library's and the offline host's alike, and its operator delete
// takes the size back off the bytes held live.
#pragma once

#include <cstddef>

namespace bench {

struct Allocations {
    std::size_t count = 0;
    std::size_t bytes = 0;
};

// The allocations made since the program started.
Allocations allocationsSoFar();

// The bytes allocated and not yet given back.
std::size_t liveBytes();

}  // namespace bench
