#include "browser/KeyboardPlace.h"

#include <algorithm>

namespace {
/// What stays inside the area of a window that is moved out of it.
constexpr int grip = 40;

QPoint direction(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return {-1, 0};
    case Qt::Key_Right:
        return {1, 0};
    case Qt::Key_Up:
        return {0, -1};
    case Qt::Key_Down:
        return {0, 1};
    default:
        return {};
    }
}
} // namespace

QRect placedByKey(const QRect& place, Placing placing, int key, int step, const QSize& area,
                  const QSize& least)
{
    const QPoint way = direction(key) * step;
    if (placing == Placing::Size)
        return {place.topLeft(), (place.size() + QSize(way.x(), way.y())).expandedTo(least)};
    if (placing == Placing::None || way.isNull())
        return place;
    const QPoint to = place.topLeft() + way;
    const int left =
        std::clamp(to.x(), std::min(grip - place.width(), 0), std::max(area.width() - grip, 0));
    return {QPoint(left, std::clamp(to.y(), 0, std::max(area.height() - grip, 0))), place.size()};
}
