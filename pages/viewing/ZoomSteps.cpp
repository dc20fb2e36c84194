#include "pages/viewing/ZoomSteps.h"

#include <algorithm>
#include <array>

namespace {
constexpr std::array steps = {25,  33,  50,  67,  75,  80,  90,  100, 110,
                              125, 150, 175, 200, 250, 300, 400, 500};
} // namespace

int zoomedIn(int percent)
{
    const auto* const above = std::upper_bound(steps.begin(), steps.end(), percent);
    return above == steps.end() ? steps.back() : *above;
}

int zoomedOut(int percent)
{
    const auto* const notBelow = std::lower_bound(steps.begin(), steps.end(), percent);
    return notBelow == steps.begin() ? steps.front() : *(notBelow - 1);
}

int zoomedBy(int percent, int turns)
{
    for (; turns > 0; --turns)
        percent = zoomedIn(percent);
    for (; turns < 0; ++turns)
        percent = zoomedOut(percent);
    return percent;
}
