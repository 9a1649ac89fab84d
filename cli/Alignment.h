// Lines up two sequences as diff does: the longest run of items they share, in order, and
// between those the items only one side has.
#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

namespace velk {

// One step of an alignment: an item of both sides (both set), or of one side only.
struct AlignedPair {
    std::optional<std::size_t> before;
    std::optional<std::size_t> after;
};

// The steps that walk `before` and `after` together, keeping in pairs the longest common
// subsequence under `same(before[i], after[j])`.
template <class T, class Same>
std::vector<AlignedPair> align(const std::vector<T>& before, const std::vector<T>& after,
                               Same same) {
    const std::size_t n = before.size();
    const std::size_t m = after.size();
    // common[i][j]: length of the longest common subsequence of before[i..] and after[j..].
    std::vector<std::vector<std::size_t>> common(n + 1, std::vector<std::size_t>(m + 1, 0));
    for (std::size_t i = n; i-- > 0;) {
        for (std::size_t j = m; j-- > 0;) {
            common[i][j] = same(before[i], after[j]) ? common[i + 1][j + 1] + 1
                                                     : std::max(common[i + 1][j], common[i][j + 1]);
        }
    }
    std::vector<AlignedPair> steps;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < n || j < m) {
        if (i < n && j < m && same(before[i], after[j])) {
            steps.push_back({i++, j++});
        } else if (j == m || (i < n && common[i + 1][j] >= common[i][j + 1])) {
            steps.push_back({i++, std::nullopt});
        } else {
            steps.push_back({std::nullopt, j++});
        }
    }
    return steps;
}

}  // namespace velk
