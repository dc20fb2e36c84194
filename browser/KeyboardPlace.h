#pragma once

#include <QRect>
#include <Qt>

/// What the arrow keys do to a window that is being moved or sized by them.
enum class Placing { None, Move, Size };

/// `place` after an arrow key, in an area of the size `area`, all in pixels. A window
/// that is moved keeps a grip of its title inside; one that is sized keeps its top left
/// corner and is no smaller than `least`. Any other key changes nothing.
QRect placedByKey(const QRect& place, Placing placing, int key, int step, const QSize& area,
                  const QSize& least);
