#include "app/Arrangement.h"

#include <algorithm>

namespace {
struct Span {
    int from;
    int length;
};

/// The i-th of `count` parts of `whole`; the last takes the remainder.
Span part(int whole, int count, int i, int least)
{
    const int length = std::max(whole / count, least);
    const int from = i * length;
    return {from, i == count - 1 ? std::max(whole - from, least) : length};
}

int dividedUp(int count, int parts)
{
    return (count + parts - 1) / parts;
}

int columnsFor(QSize area, int count, const ChildSizes& sizes)
{
    const auto columns = [&](QSize tile) {
        const int rows = std::max(area.height() / std::max(tile.height(), 1), 1);
        const int most = std::max(area.width() / std::max(tile.width(), 1), 1);
        return std::min(dividedUp(count, rows), most);
    };
    // Where there is no room for readable tiles, they are at least all visible.
    const int wanted = std::max(columns(sizes.readable), columns(sizes.least));
    const int longest = dividedUp(count, std::min(wanted, dividedUp(count, 2)));
    return dividedUp(count, longest);
}

/// Children one under the other, column by column.
std::vector<QRect> stacked(QSize area, int count, const ChildSizes& sizes)
{
    const int columns = columnsFor(area, count, sizes);
    std::vector<QRect> places;
    for (int column = 0; column < columns; ++column) {
        const Span across = part(area.width(), columns, column, sizes.least.width());
        const int rows = count / columns + (column < count % columns ? 1 : 0);
        for (int row = 0; row < rows; ++row) {
            const Span down = part(area.height(), rows, row, sizes.least.height());
            places.emplace_back(across.from, down.from, across.length, down.length);
        }
    }
    return places;
}

QSize extentOf(const std::vector<QRect>& places)
{
    QRect all;
    for (const QRect& place : places)
        all |= place;
    return all.size();
}

std::vector<QRect> stackedBesideScrollBars(QSize area, int count, const ChildSizes& sizes)
{
    std::vector<QRect> places = stacked(area, count, sizes);
    // A scroll bar takes room from the other direction, which would then need one as well.
    const QSize extent = extentOf(places);
    const QSize bars(extent.height() > area.height() ? sizes.scrollBar : 0,
                     extent.width() > area.width() ? sizes.scrollBar : 0);
    return bars.isNull() ? places : stacked(area - bars, count, sizes);
}

std::vector<QRect> sideBySide(QSize area, int count, ChildSizes sizes)
{
    sizes.least.transpose();
    sizes.readable.transpose();
    std::vector<QRect> places = stackedBesideScrollBars(area.transposed(), count, sizes);
    for (QRect& place : places)
        place = {place.y(), place.x(), place.height(), place.width()};
    return places;
}

QSize cascadedSize(QSize area, QSize least)
{
    return (area * 3 / 4).expandedTo(least);
}

/// How many children of a cascade begin at places of their own.
int cascadeLength(QSize area, QSize size, int step)
{
    const int room = std::min(area.width() - size.width(), area.height() - size.height());
    return std::max(room / std::max(step, 1), 0) + 1;
}

std::vector<QRect> cascaded(QSize area, int count, const ChildSizes& sizes)
{
    const QSize size = cascadedSize(area, sizes.least);
    const int length = cascadeLength(area, size, sizes.step);
    std::vector<QRect> places;
    for (int i = 0; i < count; ++i) {
        const int offset = (i % length) * sizes.step;
        places.emplace_back(QPoint(offset, offset), size);
    }
    return places;
}
} // namespace

std::vector<QRect> arrangedPlaces(QSize area, int count, Arrangement mode, const ChildSizes& sizes)
{
    if (count < 1)
        return {};
    switch (mode) {
    case Arrangement::TileHorizontal:
        return stackedBesideScrollBars(area, count, sizes);
    case Arrangement::TileVertical:
        return sideBySide(area, count, sizes);
    case Arrangement::Cascade:
        return cascaded(area, count, sizes);
    case Arrangement::None:
        break;
    }
    return {};
}

QRect nextCascadePlace(QSize area, const std::vector<QPoint>& taken, const ChildSizes& sizes)
{
    const int length = cascadeLength(area, cascadedSize(area, sizes.least), sizes.step);
    const std::vector<QRect> places = cascaded(area, length, sizes);
    const auto isFree = [&](const QRect& place) {
        return std::find(taken.begin(), taken.end(), place.topLeft()) == taken.end();
    };
    const auto free = std::find_if(places.begin(), places.end(), isFree);
    return free != places.end() ? *free : places[taken.size() % places.size()];
}
