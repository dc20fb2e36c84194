#pragma once

#include <algorithm>
#include <vector>

/// Which of `places`, which ascend, follows `here` or comes before it, from 0 on; behind the last
/// one comes the first. -1 if there are none.
template <typename Place>
int placeBeside(const std::vector<Place>& places, const Place& here, bool backwards)
{
    if (places.empty())
        return -1;
    const auto begin = places.begin();
    const auto end = places.end();
    if (backwards) {
        const auto at = std::lower_bound(begin, end, here);
        return static_cast<int>((at == begin ? end : at) - begin) - 1;
    }
    const auto next = std::upper_bound(begin, end, here);
    return static_cast<int>(next == end ? 0 : next - begin);
}
