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

/// The places of `count` children in an area that begins at (0, 0), in pixels.
/// Tiles share the area evenly, the remainder goes to the last one; no child
/// becomes smaller than `least`, so that many of them run out of the area. A
/// cascade steps by `step` and begins again at the corner when it is full.
std::vector<QRect> arrangedPlaces(QSize area, int count, Arrangement mode, int step, QSize least);
