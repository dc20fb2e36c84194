#include "history/HistoryColumns.h"

#include <cmath>

namespace {
/// The nearest whole number, halves to even.
int nearest(double value)
{
    return static_cast<int>(std::nearbyint(value));
}
} // namespace

HistoryWidths freshWidths(int gridWidth)
{
    const int wide = nearest(gridWidth * 3.5 / 9);
    return {wide, wide, nearest(gridWidth * 2.0 / 9)};
}

HistoryWidths fittedWidths(int clientWidth, int clientHeight, int rowHeight, int rows)
{
    const long long allRows = static_cast<long long>(rowHeight) * rows;
    const int reserve = clientHeight < allRows ? 350 : 100;
    const int width = clientWidth - reserve;
    const int wide = nearest(width / 2.5);
    return {wide, wide, width - 2 * wide};
}
