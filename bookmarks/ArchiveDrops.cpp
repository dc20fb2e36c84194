#include "bookmarks/ArchiveDrops.h"

#include "base/DroppedAddress.h"
#include "bookmarks/ArchiveView.h"
#include "bookmarks/DroppedBookmark.h"

#include <QApplication>
#include <QDropEvent>
#include <QScrollBar>

namespace {
/// Copying or linking if the source offers it: after a move it would delete its data.
Qt::DropAction keepingAction(const QDropEvent& event)
{
    for (const auto action : {Qt::CopyAction, Qt::LinkAction})
        if (event.possibleActions().testFlag(action))
            return action;
    return event.proposedAction();
}
} // namespace

ArchiveDrops::ArchiveDrops(ArchiveView& view, const HistoryCollection& history)
    : QObject(&view), m_view(view), m_history(history)
{
    view.viewport()->setAcceptDrops(true);
    view.viewport()->installEventFilter(this);
}

bool ArchiveDrops::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        break;
    case QEvent::DragLeave:
        m_scrolling.stop();
        return true;
    default:
        return QObject::eventFilter(watched, event);
    }
    auto& drag = *static_cast<QDropEvent*>(event);
    if (isBlocked()) {
        m_scrolling.stop();
        drag.ignore();
        return true;
    }
    drag.setDropAction(keepingAction(drag));
    drag.accept();
    if (event->type() == QEvent::Drop)
        drop(drag);
    else
        dragOver(drag.position().toPoint());
    return true;
}

bool ArchiveDrops::isBlocked() const
{
    const QWidget* modal = QApplication::activeModalWidget();
    return modal != nullptr && modal != m_view.window();
}

void ArchiveDrops::dragOver(const QPoint& position)
{
    m_highlight = m_view.indexAt(position);
    if (m_highlight != m_view.selectedNode()) {
        // Without scrolling: the node is to stay under the mouse.
        const bool scrolls = m_view.hasAutoScroll();
        m_view.setAutoScroll(false);
        m_view.selectNode(m_highlight);
        m_view.setAutoScroll(scrolls);
    }
    scrollAtEdge(position);
}

void ArchiveDrops::scrollAtEdge(const QPoint& position)
{
    constexpr int milliseconds = 100;
    const int margin = m_view.autoScrollMargin();
    const int below = m_view.viewport()->height() - margin;
    m_position = position;
    m_step = position.y() < margin ? -1 : position.y() >= below ? 1 : 0;
    if (m_step == 0)
        m_scrolling.stop();
    else if (!m_scrolling.isActive())
        m_scrolling.start(milliseconds, this);
}

void ArchiveDrops::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_scrolling.timerId())
        return;
    QScrollBar* bar = m_view.verticalScrollBar();
    const int before = bar->value();
    bar->setValue(before + m_step * bar->singleStep());
    if (isBlocked() || bar->value() == before)
        m_scrolling.stop();
    else
        dragOver(m_position);
}

void ArchiveDrops::drop(const QDropEvent& event)
{
    m_scrolling.stop();
    m_highlight = QModelIndex();
    const QModelIndex node = m_view.selectedNode();
    if (!node.isValid() || !takesDrop(node.data().toString()))
        return;
    const auto dropped = droppedBookmark(droppedAddress(*event.mimeData()), m_history);
    emit bookmarkDropped(dropped.title, dropped.url);
}
