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

QRect cascaded(QSize area, int i, int step, QSize least)
{
    const QSize size = (area * 3 / 4).expandedTo(least);
    const int room = std::min(area.width() - size.width(), area.height() - size.height());
    const int places = std::max(room / std::max(step, 1), 0) + 1;
    const int offset = (i % places) * step;
    return {QPoint(offset, offset), size};
}
} // namespace

std::vector<QRect> arrangedPlaces(QSize area, int count, Arrangement mode, int step, QSize least)
{
    std::vector<QRect> places;
    for (int i = 0; i < count; ++i) {
        if (mode == Arrangement::TileHorizontal) {
            const Span rows = part(area.height(), count, i, least.height());
            places.emplace_back(0, rows.from, std::max(area.width(), least.width()), rows.length);
        } else if (mode == Arrangement::TileVertical) {
            const Span columns = part(area.width(), count, i, least.width());
            places.emplace_back(columns.from, 0, columns.length,
                                std::max(area.height(), least.height()));
        } else if (mode == Arrangement::Cascade) {
            places.push_back(cascaded(area, i, step, least));
        }
    }
    return places;
}
