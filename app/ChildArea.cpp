#include "app/ChildArea.h"

#include <QDropEvent>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QStyle>

#include <algorithm>

ChildArea::ChildArea(QWidget* parent) : QMdiArea(parent)
{
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
}

void ChildArea::addChild(QMdiSubWindow* child)
{
    const QSize size = viewport()->size() * 3 / 4;
    addSubWindow(child);
    child->resize(size.expandedTo(child->minimumSizeHint()));
}

void ChildArea::arrange(Arrangement mode)
{
    if (mode == Arrangement::None)
        return;
    // A cascade keeps the order in which the children lie over each other.
    const auto order = mode == Arrangement::Cascade ? StackingOrder : CreationOrder;
    QList<QMdiSubWindow*> children;
    const QList<QMdiSubWindow*> all = subWindowList(order);
    std::copy_if(all.begin(), all.end(), std::back_inserter(children),
                 [](QMdiSubWindow* child) { return !child->isMinimized() && !child->isHidden(); });
    QSize least(0, 0);
    for (QMdiSubWindow* child : children) {
        if (child->isMaximized())
            child->showNormal();
        least = least.expandedTo(child->minimumSizeHint());
    }
    const int step = style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this);
    const auto places =
        arrangedPlaces(roomAboveIcons(), static_cast<int>(children.size()), mode, step, least);
    for (qsizetype i = 0; i < children.size(); ++i)
        children[i]->setGeometry(places[static_cast<std::size_t>(i)]);
}

QSize ChildArea::roomAboveIcons() const
{
    QSize room = viewport()->size();
    int top = room.height();
    const QList<QMdiSubWindow*> all = subWindowList();
    for (const QMdiSubWindow* child : all) {
        if (child->isMinimized() && child->y() >= room.height() / 2)
            top = std::min(top, child->y());
    }
    room.setHeight(top);
    return room;
}

bool ChildArea::hasMaximizedChild() const
{
    const QList<QMdiSubWindow*> all = subWindowList();
    return std::any_of(all.begin(), all.end(),
                       [](const QMdiSubWindow* child) { return child->isMaximized(); });
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

bool ChildArea::isFree(const QPoint& position) const
{
    return viewport()->childAt(position) == nullptr;
}

bool ChildArea::drag(QDropEvent& event)
{
    event.setDropAction(Qt::CopyAction);
    // Over a child the move is refused, yet it may come back to the free part.
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
    emit addressDropped(droppedAddress(*event.mimeData()));
    return true;
}
