// Stores grown from a small sample to any size, for the benchmarks and the large project.
#pragma once

#include <velkhost/OfflineHost.h>

#include <cstddef>

namespace bench {

// The first `leading` records of `sample` (records that are not operations or tools, such as a
// store's host records), then the rest of its records over and over, up to `count` records.
// `sample` holds more than `leading` records.
inline velkhost::Records grown(const velkhost::Records& sample, std::size_t leading,
                               std::size_t count) {
    velkhost::Records records;
    records.reserve(count);
    const std::size_t repeated = sample.size() - leading;
    for (std::size_t i = 0; i < count; ++i) {
        records.push_back(sample[i < leading ? i : leading + (i - leading) % repeated]);
    }
    return records;
}

}  // namespace bench
