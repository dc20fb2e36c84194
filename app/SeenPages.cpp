#include "app/SeenPages.h"

#include "browser/frmBrowser.h"

#include <QChildEvent>
#include <QMdiArea>

#include <algorithm>

namespace {

/// What hides the windows below: without the corners that a style cuts off.
QRegion solidPart(const QWidget& window)
{
    return window.mask().isEmpty() ? QRegion(window.geometry())
                                   : window.mask().translated(window.pos());
}

/// The place of the page in the area; empty where the window has no page to show.
QRect placeOfPage(const frmBrowser& window, const QWidget& viewport)
{
    const QWidget* const host = window.brwWebBrowser()->host();
    if (!host->isVisible())
        return {};
    // A window that is a mere title, or too low, cuts its page off.
    return QRect(host->mapTo(&viewport, QPoint()), host->size()) & window.geometry();
}

} // namespace

SeenPages::SeenPages(QMdiArea& area) : QObject(&area), m_area(area)
{
    area.viewport()->installEventFilter(this);
    area.window()->installEventFilter(this);
    connect(&area, &QMdiArea::subWindowActivated, this, &SeenPages::lookLater);
}

bool SeenPages::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ChildAdded:
        if (auto* window = qobject_cast<frmBrowser*>(static_cast<QChildEvent*>(event)->child()))
            watch(*window);
        break;
    case QEvent::ChildRemoved:
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::ZOrderChange:
    case QEvent::WindowStateChange:
        lookLater();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void SeenPages::watch(frmBrowser& window)
{
    window.installEventFilter(this);
    window.brwWebBrowser()->host()->installEventFilter(this);
    // A page that is hidden from its engine could not be given the focus.
    connect(&window, &QMdiSubWindow::aboutToActivate, this, [&window] { window.pageSeen(true); });
    lookLater();
}

void SeenPages::lookLater()
{
    if (m_willLook)
        return;
    m_willLook = true;
    // Before the next paint, which is asked for with a lower priority, so that what a window
    // uncovers is there when it is painted.
    QMetaObject::invokeMethod(this, &SeenPages::look, Qt::QueuedConnection);
}

void SeenPages::look()
{
    m_willLook = false;
    const QWidget& viewport = *m_area.viewport();
    QRegion free = viewport.rect();
    if (m_area.window()->isMinimized())
        free = {};
    QList<QMdiSubWindow*> fromTop = m_area.subWindowList(QMdiArea::StackingOrder);
    std::reverse(fromTop.begin(), fromTop.end());
    for (QMdiSubWindow* const window : fromTop) {
        if (auto* const browser = qobject_cast<frmBrowser*>(window); browser != nullptr) {
            const QRect page = placeOfPage(*browser, viewport);
            const bool isActive = window == m_area.currentSubWindow();
            browser->pageSeen(!page.isEmpty() && (isActive || free.intersects(page)));
        }
        if (window->isVisible())
            free -= solidPart(*window);
    }
}
