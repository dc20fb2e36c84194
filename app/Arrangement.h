#pragma once

#include <QRect>
#include <QSize>

#include <vector>

/// How the frame lays out its children.
enum class Arrangement {
    Cascade = 0,
    /// One under the other.
    TileHorizontal = 1,
    /// Side by side.
    TileVertical = 2,
    None = -1
};

/// What the children need, in pixels.
struct ChildSizes {
    /// No child becomes smaller; where that many have no room they run out of the area.
    QSize least;
    /// Smaller tiles leave nothing of a page that could be read.
    QSize readable;
    /// From one child of a cascade to the next, both ways.
    int step = 0;
    /// The thickness of a scroll bar.
    int scrollBar = 0;
};

/// The places of `count` children in an area that begins at (0, 0), in pixels.
///
/// Tiles fill the area. One under the other they become two or more columns, as few as
/// needed, when they would not be readable or run out of the area; the same holds for
/// rows of children side by side. At least two always stay one under the other or side
/// by side, so that two children lie as the user has chosen even where both are small.
/// A cascade begins again at the corner when the area is full.
std::vector<QRect> arrangedPlaces(QSize area, int count, Arrangement mode, const ChildSizes& sizes);

/// The place in a cascade for one more child, where no other begins if there is such a
/// place; `taken` are the upper left corners of the others.
QRect nextCascadePlace(QSize area, const std::vector<QPoint>& taken, const ChildSizes& sizes);
