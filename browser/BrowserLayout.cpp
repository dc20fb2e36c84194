#include "browser/BrowserLayout.h"

#include "base/Twips.h"

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
