#pragma once

#include <algorithm>
#include <array>

constexpr int normalZoom = 100;

/// The size of a page, in percent of its own, that `turns` steps of the wheel lead to from
/// `percent`: up (positive) is larger. `percent` need not be a step itself; at either end of
/// the steps the size stays.
constexpr int zoomedBy(int percent, int turns)
{
    constexpr std::array steps = {25,  33,  50,  67,  75,  80,  90,  100, 110,
                                  125, 150, 175, 200, 250, 300, 400, 500};
    for (; turns > 0; --turns) {
        const auto* const above = std::upper_bound(steps.begin(), steps.end(), percent);
        percent = above == steps.end() ? steps.back() : *above;
    }
    for (; turns < 0; ++turns) {
        const auto* const notBelow = std::lower_bound(steps.begin(), steps.end(), percent);
        percent = notBelow == steps.begin() ? steps.front() : *(notBelow - 1);
    }
    return percent;
}
