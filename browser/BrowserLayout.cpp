#include "browser/BrowserLayout.h"

#include "base/Twips.h"

#include <algorithm>

namespace {
/// How much of a window that is moved out of its area stays inside, in pixels: of its width
/// more than the buttons of the title bar take, of its height the title bar.
constexpr QSize grip(100, 40);

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

int BrowserBars::shownHeight() const
{
    return (toolbarShown ? toolbarHeight : 0) + (addressShown ? addressHeight : 0);
}

BarPlaces placeBars(int clientWidth, const BrowserBars& bars)
{
    const int addressTop = bars.toolbarShown ? bars.toolbarHeight : 0;
    return {QRect(0, 0, clientWidth, bars.toolbarHeight),
            QRect(0, addressTop, clientWidth, bars.addressHeight)};
}

std::optional<BrowserLayout> layOutBrowser(QSize client, int addressLeft, int engineTop,
                                           const BrowserBars& bars)
{
    if (client.width() - addressLeft <= 0 || client.height() - engineTop <= 0)
        return std::nullopt;
    const int top = bars.shownHeight();
    return BrowserLayout{client.width() - addressLeft,
                         QRect(0, top, client.width(), client.height() - top)};
}

qint64 windowHeightFor(int content, int window, int client, const BrowserBars& bars)
{
    constexpr int allowance = 450;
    return qint64{toTwips(bars.toolbarHeight + bars.addressHeight)} + window - toTwips(client) +
           qint64{content} * twipsPerPixel + allowance;
}

qint64 windowWidthFor(int content, int window, int client)
{
    constexpr int allowance = 600;
    return qint64{window} - toTwips(client) + qint64{content} * twipsPerPixel + allowance;
}

QRect placedByKey(const QRect& place, Placing placing, int key, int step, const QSize& area,
                  const QSize& least)
{
    const QPoint way = direction(key) * step;
    if (placing == Placing::Size)
        return {place.topLeft(), (place.size() + QSize(way.x(), way.y())).expandedTo(least)};
    if (placing == Placing::None || way.isNull())
        return place;
    return withinReach(place.translated(way), area);
}

QRect withinReach(const QRect& place, const QSize& area)
{
    const QSize most = (area - grip).expandedTo({0, 0});
    const int least = std::min(grip.width() - place.width(), 0);
    return {
        QPoint(std::clamp(place.x(), least, most.width()), std::clamp(place.y(), 0, most.height())),
        place.size()};
}

QRect movedInside(const QRect& place, const QSize& area)
{
    const QSize most = (area - place.size()).expandedTo({0, 0});
    return {QPoint(std::clamp(place.x(), 0, most.width()), std::clamp(place.y(), 0, most.height())),
            place.size()};
}
