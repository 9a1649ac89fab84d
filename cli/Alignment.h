// Lines up two sequences as diff does: the longest run of items they share, in order, and
// between those the items only one side has.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace velk {

// One step of an alignment: an item of both sides (both set), or of one side only.
struct AlignedPair {
    std::optional<std::size_t> before;
    std::optional<std::size_t> after;
};

// The size of the middle parts of two sequences (after their common start and end) beyond which
// the longest common subsequence is not searched, as its table would take more than 256 MB:
// the middle of `before` is then all removed and that of `after` all added.
constexpr std::size_t kLargestAlignedMiddle = std::size_t{64} << 20;

// The steps that walk `before` and `after` together, keeping in pairs the items both share at
// the start and the end and, between those, the longest common subsequence under
// `same(before[i], after[j])`.
template <class T, class Same>
std::vector<AlignedPair> align(const std::vector<T>& before, const std::vector<T>& after, Same same,
                               std::size_t largestMiddle = kLargestAlignedMiddle) {
    std::size_t first = 0;
    while (first < before.size() && first < after.size() && same(before[first], after[first])) {
        ++first;
    }
    std::size_t n = before.size();
    std::size_t m = after.size();
    while (n > first && m > first && same(before[n - 1], after[m - 1])) {
        --n;
        --m;
    }
    std::vector<AlignedPair> steps;
    for (std::size_t k = 0; k < first; ++k) {
        steps.push_back({k, k});
    }
    const std::size_t rows = n - first;
    const std::size_t columns = m - first;
    if (rows * columns > largestMiddle) {
        for (std::size_t k = 0; k < rows; ++k) {
            steps.push_back({first + k, std::nullopt});
        }
        for (std::size_t k = 0; k < columns; ++k) {
            steps.push_back({std::nullopt, first + k});
        }
    } else {
        // common[i][j]: length of the longest common subsequence of the middles from i and j.
        std::vector<std::uint32_t> common((rows + 1) * (columns + 1), 0);
        const auto at = [&](std::size_t i, std::size_t j) -> std::uint32_t& {
            return common[i * (columns + 1) + j];
        };
        for (std::size_t i = rows; i-- > 0;) {
            for (std::size_t j = columns; j-- > 0;) {
                at(i, j) = same(before[first + i], after[first + j])
                               ? at(i + 1, j + 1) + 1
                               : std::max(at(i + 1, j), at(i, j + 1));
            }
        }
        std::size_t i = 0;
        std::size_t j = 0;
        while (i < rows || j < columns) {
            if (i < rows && j < columns && same(before[first + i], after[first + j])) {
                steps.push_back({first + i++, first + j++});
            } else if (j == columns || (i < rows && at(i + 1, j) >= at(i, j + 1))) {
                steps.push_back({first + i++, std::nullopt});
            } else {
                steps.push_back({std::nullopt, first + j++});
            }
        }
    }
    for (std::size_t k = 0; n + k < before.size(); ++k) {
        steps.push_back({n + k, m + k});
    }
    return steps;
}

}  // namespace velk
