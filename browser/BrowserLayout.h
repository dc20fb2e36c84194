#pragma once

#include <QRect>
#include <QSize>

#include <optional>

/// The arithmetic of a browser window's client area, in pixels. The toolbar and
/// the address panel are stacked at the top, the engine fills the rest.
struct BrowserBars {
    int toolbarHeight = 0;
    int addressHeight = 0;
    bool toolbarShown = false;
    bool addressShown = false;

    int shownHeight() const;
};

/// Where the two bars belong; a hidden bar takes no room.
struct BarPlaces {
    QRect toolbar;
    QRect address;
};
BarPlaces placeBars(int clientWidth, const BrowserBars& bars);

struct BrowserLayout {
    int addressWidth = 0;
    QRect engine;
};
/// The layout of a window, or nothing where it is too small for one:
/// `addressLeft` is the left edge of the address line, `engineTop` where the
/// engine stands before the layout.
std::optional<BrowserLayout> layOutBrowser(QSize client, int addressLeft, int engineTop,
                                           const BrowserBars& bars);

/// The window size, in twips, for a content size in pixels that a page asks for.
/// `window` is the present size of the whole window in twips, `client` that of
/// its client area in pixels. Both bars count, shown or not.
qint64 windowHeightFor(int content, int window, int client, const BrowserBars& bars);
qint64 windowWidthFor(int content, int window, int client);

/// What the arrow keys do to a window.
enum class Placing { None, Move, Size };

/// `place` after an arrow key, in an area of the size `area`, all in pixels. A window
/// that is moved keeps a part of its title bar inside; one that is sized keeps its top
/// left corner and is no smaller than `least`. Any other key changes nothing.
QRect placedByKey(const QRect& place, Placing placing, int key, int step, const QSize& area,
                  const QSize& least);

/// `place` moved as little as needed for the title bar to be grasped in an area of this size.
QRect withinReach(const QRect& place, const QSize& area);
/// `place` moved into the area; one that is too large begins at its upper left corner.
QRect movedInside(const QRect& place, const QSize& area);
