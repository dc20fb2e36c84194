#include "app/ChildArea.h"

#include "browser/frmBrowser.h"

#include <QDropEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>

namespace {
constexpr QSize readablePage(240, 160);

/// Whether `source` is a part of a private browser window.
bool isInPrivateWindow(const QObject* source)
{
    for (; source != nullptr; source = source->parent())
        if (const auto* const window = qobject_cast<const frmBrowser*>(source))
            return window->isPrivate();
    return false;
}
} // namespace

ChildArea::ChildArea(QWidget* parent) : QMdiArea(parent)
{
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
    connect(this, &QMdiArea::subWindowActivated, this, &ChildArea::stackIcons);
}

ChildArea::~ChildArea()
{
    // The base class activates and restores children while it takes them along.
    disconnect(this, nullptr, this, nullptr);
    const QList<QMdiSubWindow*> all = subWindowList();
    for (QMdiSubWindow* child : all)
        child->disconnect(this);
}

void ChildArea::addChild(frmBrowser* child)
{
    const ChildSizes sizes = sizesOf({child});
    std::vector<QPoint> taken;
    const QList<frmBrowser*> others = laidOutChildren(CreationOrder);
    for (const frmBrowser* other : others)
        if (!other->isMaximized())
            taken.push_back(other->pos());
    // Before the frame is shown the area has no size of its own yet.
    const QSize room = isVisible() ? roomAboveIcons() : window()->size();
    addSubWindow(child);
    child->setGeometry(nextCascadePlace(room, taken, sizes));
    connect(child, &frmBrowser::placedByHand, this, [this] { m_inForce = Arrangement::None; });
    connect(child, &QMdiSubWindow::windowStateChanged, this,
            [this](Qt::WindowStates before, Qt::WindowStates now) {
                constexpr Qt::WindowStates placeless = Qt::WindowMinimized | Qt::WindowMaximized;
                // The area may have changed while the child had no place in it.
                if ((before & placeless) && !(now & placeless))
                    layOut();
                stackIcons();
            });
}

void ChildArea::stackIcons()
{
    QMdiSubWindow* const active = currentSubWindow();
    const QList<QMdiSubWindow*> all = subWindowList();
    for (QMdiSubWindow* child : all) {
        if (!child->isMinimized() || child == active)
            continue;
        if (active != nullptr && active->isMaximized())
            child->stackUnder(active);
        else
            child->raise();
    }
}

void ChildArea::arrange(Arrangement mode)
{
    m_inForce = mode;
    if (mode == Arrangement::None)
        return;
    // Restoring a child makes it the active one.
    QMdiSubWindow* const active = currentSubWindow();
    const QList<frmBrowser*> children = laidOutChildren(CreationOrder);
    for (frmBrowser* child : children)
        if (child->isMaximized())
            child->showNormal();
    layOut();
    if (active != nullptr)
        setActiveSubWindow(active);
}

void ChildArea::layOut()
{
    m_laidOutIn = maximumViewportSize();
    // A cascade keeps the order in which the children lie over each other.
    const QList<frmBrowser*> children =
        laidOutChildren(m_inForce == Arrangement::Cascade ? StackingOrder : CreationOrder);
    const std::vector<QRect> places = arrangedPlaces(
        roomAboveIcons(), static_cast<int>(children.size()), m_inForce, sizesOf(children));
    for (std::size_t i = 0; i < places.size(); ++i) {
        frmBrowser* const child = children[static_cast<qsizetype>(i)];
        if (!child->isMaximized())
            child->setGeometry(places[i]);
    }
}

QList<frmBrowser*> ChildArea::laidOutChildren(QMdiArea::WindowOrder order) const
{
    QList<frmBrowser*> children;
    const QList<QMdiSubWindow*> all = subWindowList(order);
    for (QMdiSubWindow* window : all) {
        auto* const child = qobject_cast<frmBrowser*>(window);
        if (child != nullptr && !child->isMinimized() && !child->isHidden())
            children.append(child);
    }
    return children;
}

ChildSizes ChildArea::sizesOf(const QList<frmBrowser*>& children) const
{
    const int title = style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this);
    const int border = style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, this);
    ChildSizes sizes{QSize(0, 0), readablePage, title, verticalScrollBar()->sizeHint().width()};
    int bars = 0;
    for (const frmBrowser* child : children) {
        sizes.least = sizes.least.expandedTo(child->minimumSizeHint());
        bars = std::max(bars, child->barsHeight());
    }
    sizes.readable.rheight() += title + border + bars;
    return sizes;
}

QSize ChildArea::roomAboveIcons() const
{
    const int height = viewport()->height();
    int icons = 0;
    const QList<QMdiSubWindow*> all = subWindowList();
    for (const QMdiSubWindow* child : all)
        if (child->isMinimized() && child->y() >= height / 2)
            icons = std::max(icons, height - child->y());
    // Scroll bars that are there now go when the children have their places.
    return maximumViewportSize() - QSize(0, icons);
}

void ChildArea::acceptAddresses(bool accept)
{
    m_acceptAddresses = accept;
    viewport()->setAcceptDrops(accept);
}

bool ChildArea::viewportEvent(QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        const auto& press = *static_cast<QMouseEvent*>(event);
        if (press.button() == Qt::RightButton && isFree(press.position().toPoint()))
            emit contextMenuWanted(press.globalPosition().toPoint());
        break;
    }
    case QEvent::DragEnter:
    case QEvent::DragMove:
        return drag(*static_cast<QDropEvent*>(event));
    case QEvent::Drop:
        return drop(*static_cast<QDropEvent*>(event));
    default:
        break;
    }
    return QMdiArea::viewportEvent(event);
}

void ChildArea::resizeEvent(QResizeEvent* event)
{
    QMdiArea::resizeEvent(event);
    // Scroll bars that come and go resize the area, too. Nothing is laid out for them, so
    // that a window which a page has made larger than the area stays so.
    if (m_laidOutIn != maximumViewportSize())
        layOut();
}

bool ChildArea::isFree(const QPoint& position) const
{
    return viewport()->childAt(position) == nullptr;
}

bool ChildArea::drag(QDropEvent& event)
{
    event.setDropAction(Qt::CopyAction);
    // A drag that enters over a child is accepted, too: else the free part would not hear of
    // it when it comes there.
    event.setAccepted(m_acceptAddresses && !droppedAddress(*event.mimeData()).isEmpty() &&
                      (event.type() == QEvent::DragEnter || isFree(event.position().toPoint())));
    return true;
}

bool ChildArea::drop(QDropEvent& event)
{
    if (!m_acceptAddresses || !isFree(event.position().toPoint())) {
        event.ignore();
        return true;
    }
    event.setDropAction(Qt::CopyAction);
    event.accept();
    emit addressDropped(droppedAddress(*event.mimeData()), isInPrivateWindow(event.source()));
    return true;
}
