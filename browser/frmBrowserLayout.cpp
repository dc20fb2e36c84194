#include "browser/frmBrowser.h"

#include "base/Twips.h"
#include "browser/AddressBar.h"
#include "browser/BrowserLayout.h"
#include "browser/BrowserToolbar.h"

#include <QEvent>

#include <algorithm>

namespace {
// Beyond this the toolkit cannot make a window.
constexpr qint64 largestSide = QWIDGETSIZE_MAX;

int pixels(qint64 twips)
{
    return static_cast<int>(std::clamp<qint64>(twips / twipsPerPixel, 1, largestSide));
}
} // namespace

void frmBrowser::PubResize()
{
    layOut();
}

bool frmBrowser::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_client && event->type() == QEvent::Resize)
        layOut();
    return QMdiSubWindow::eventFilter(watched, event);
}

bool frmBrowser::event(QEvent* event)
{
    if (event->type() != QEvent::MouseMove && event->type() != QEvent::KeyPress)
        return QMdiSubWindow::event(event);
    const QRect before = geometry();
    const bool isHandled = QMdiSubWindow::event(event);
    if (geometry() != before && !isMaximized() && !isMinimized())
        emit placedByHand();
    return isHandled;
}

int frmBrowser::barsHeight() const
{
    return bars().shownHeight();
}

BrowserBars frmBrowser::bars() const
{
    return {m_toolbar->sizeHint().height(), m_addressBar->panelHeight(), isToolbarShown(),
            isAddressBarShown()};
}

void frmBrowser::layOut()
{
    const BrowserBars present = bars();
    const BarPlaces places = placeBars(m_client->width(), present);
    m_toolbar->setGeometry(places.toolbar);
    m_addressBar->setGeometry(places.address);
    QWidget* page = m_engine->host();
    const auto layout =
        layOutBrowser(m_client->size(), m_addressBar->addressLeft(), page->y(), present);
    if (!layout)
        return;
    m_addressBar->addressWidth(layout->addressWidth);
    page->setGeometry(layout->engine);
}

void frmBrowser::setWindowHeight(int content)
{
    if (isMaximized() || isMinimized())
        return;
    const qint64 twips = windowHeightFor(content, toTwips(height()), m_client->height(), bars());
    resize(width(), pixels(twips));
}

void frmBrowser::setWindowWidth(int content)
{
    if (isMaximized() || isMinimized())
        return;
    const qint64 twips = windowWidthFor(content, toTwips(width()), m_client->width());
    resize(pixels(twips), height());
}
