#include "bookmarks/ArchiveDrops.h"

#include "base/DroppedAddress.h"
#include "bookmarks/DroppedBookmark.h"

#include <QApplication>
#include <QDropEvent>
#include <QScrollBar>
#include <QTreeView>

namespace {
QModelIndex selectedNode(const QTreeView& view)
{
    return view.selectionModel()->selectedIndexes().value(0);
}

/// Without scrolling: the node is to stay under the mouse.
void selectNode(QTreeView& view, const QModelIndex& node)
{
    const bool scrolls = view.hasAutoScroll();
    view.setAutoScroll(false);
    if (node.isValid())
        view.selectionModel()->setCurrentIndex(node, QItemSelectionModel::ClearAndSelect);
    else
        view.selectionModel()->clear();
    view.setAutoScroll(scrolls);
}

/// The source is to keep its data: a move would let it delete them.
Qt::DropAction keepingAction(const QDropEvent& event)
{
    for (const auto action : {Qt::CopyAction, Qt::LinkAction})
        if (event.possibleActions().testFlag(action))
            return action;
    return event.proposedAction();
}
} // namespace

TreeDrops::TreeDrops(QTreeView& view, const HistoryCollection& history)
    : QObject(&view), m_view(view), m_history(history)
{
    view.setDragEnabled(false);
    view.viewport()->setAcceptDrops(true);
    view.viewport()->installEventFilter(this);
}

bool TreeDrops::eventFilter(QObject* watched, QEvent* event)
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

bool TreeDrops::isBlocked() const
{
    const QWidget* modal = QApplication::activeModalWidget();
    return modal != nullptr && modal != m_view.window();
}

void TreeDrops::dragOver(const QPoint& position)
{
    m_highlight = m_view.indexAt(position);
    if (m_highlight != selectedNode(m_view))
        selectNode(m_view, m_highlight);
    scrollAtEdge(position);
}

void TreeDrops::scrollAtEdge(const QPoint& position)
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

void TreeDrops::timerEvent(QTimerEvent* event)
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

void TreeDrops::drop(const QDropEvent& event)
{
    m_scrolling.stop();
    m_highlight = QModelIndex();
    const QModelIndex node = selectedNode(m_view);
    if (!node.isValid() || !takesDrop(node.data().toString()))
        return;
    const auto dropped = droppedBookmark(droppedAddress(*event.mimeData()), m_history);
    emit bookmarkDropped(dropped.title, dropped.url);
}
