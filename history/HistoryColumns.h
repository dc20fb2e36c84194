#pragma once

#include <array>

/// The arithmetic of the history window. Widths and heights are in twips unless
/// a name says otherwise; rows include the header.

/// Widths of the columns address, title and date.
using HistoryWidths = std::array<int, 3>;

/// The widths that a fresh grid of this width starts with.
HistoryWidths freshWidths(int gridWidth);
/// The widths that leave room for the scroll bar, which shows when the rows are
/// higher than the client area.
HistoryWidths fittedWidths(int clientWidth, int clientHeight, int rowHeight, int rows);

/// Whether a press at x, y (from the grid's top-left corner, in any one unit)
/// counts as one on the header. The borders themselves do.
constexpr bool hitsHeader(int x, int y, int headerHeight, int columnsWidth)
{
    return y <= headerHeight && x <= columnsWidth;
}

/// The least size of the window, in pixels: 2500 x 1590 twips, rounded up.
constexpr int leastHistoryWidth = 167;
constexpr int leastHistoryHeight = 106;
