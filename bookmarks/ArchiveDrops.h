#pragma once

#include "history/HistoryList.h"

#include <QBasicTimer>
#include <QObject>
#include <QPersistentModelIndex>
#include <QPoint>

class ArchiveView;
class QDropEvent;

/// Lets addresses, texts and files be dropped on the archive's tree. While something is
/// dragged over the tree, the node under the mouse becomes the selected one, and the
/// drop acts on it. A drag is refused only while a dialog blocks the tree's window, as
/// the selection must not change then.
///
/// An object of this class belongs to its view.
class ArchiveDrops : public QObject {
    Q_OBJECT
public:
    /// A dropped address that was visited gets its title from `history`, which outlives this.
    ArchiveDrops(ArchiveView& view, const HistoryCollection& history);

    /// The node that the last drag passed, even when it has left the tree since;
    /// none after a drop.
    const QPersistentModelIndex& DropHighlight() const { return m_highlight; }

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// Something was dropped on the selected node, which takes it. Both texts are empty
    /// when it was neither a text nor a file.
    void bookmarkDropped(const QString& title, const QString& url);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    bool isBlocked() const;
    void dragOver(const QPoint& position);
    void scrollAtEdge(const QPoint& position);
    void drop(const QDropEvent& event);

    ArchiveView& m_view;
    const HistoryCollection& m_history;
    QPersistentModelIndex m_highlight;
    QBasicTimer m_scrolling;
    QPoint m_position; ///< where the mouse is in the viewport
    int m_step = 0;    ///< rows to scroll: -1, 0 or 1
};
