#include "bookmarks/TreeMouse.h"

#include "base/Guarded.h"

#include <QContextMenuEvent>
#include <QCursor>
#include <QMouseEvent>
#include <QTreeView>

using namespace Qt::StringLiterals;

TreeMouse::TreeMouse(QTreeView& view, const Nodes& nodes)
    : QObject(&view), m_view(view), m_nodes(nodes)
{
    view.setExpandsOnDoubleClick(false);
    view.viewport()->setMouseTracking(true);
    view.viewport()->installEventFilter(this);
    // Emitted for the left button only, and not for the box.
    connect(&view, &QTreeView::clicked, this,
            [this](const QModelIndex& node) { nodeClicked(node, QCursor::pos()); });
    connect(&view, &QTreeView::doubleClicked, this, [this] {
        if (m_button == Qt::LeftButton)
            emit openWanted();
    });
}

bool TreeMouse::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return pressed(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseButtonRelease:
        released(*static_cast<QMouseEvent*>(event));
        return false;
    case QEvent::MouseMove: {
        const auto& move = *static_cast<QMouseEvent*>(event);
        tellAddress(m_view.indexAt(move.position().toPoint()));
        return false;
    }
    case QEvent::ContextMenu: // the press was answered already
        return static_cast<QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Mouse;
    default:
        return QObject::eventFilter(watched, event);
    }
}

bool TreeMouse::pressed(const QMouseEvent& event)
{
    m_button = event.button();
    m_pressed = QModelIndex();
    if (m_button == Qt::RightButton && m_view.selectionModel()->hasSelection()) {
        // The menu may end the window; the press must not get to the tree anyhow.
        emit contextMenuWanted(event.globalPosition().toPoint());
        return true;
    }
    m_pressed = m_view.indexAt(event.position().toPoint());
    return false;
}

void TreeMouse::released(const QMouseEvent& event)
{
    if (event.button() == Qt::LeftButton || event.button() != m_button)
        return;
    const QModelIndex node = m_view.indexAt(event.position().toPoint());
    if (node.isValid() && node == m_pressed)
        nodeClicked(node, event.globalPosition().toPoint());
}

void TreeMouse::nodeClicked(const QModelIndex& node, const QPoint& globalPos)
{
    const QString tag = m_nodes.tag(node);
    if (tag == u"Url"_s)
        tellAddress(node);
    if (tag != u"Dir"_s)
        return;
    emit statusText(QString());
    if (m_button == Qt::LeftButton)
        m_view.setExpanded(node, !m_view.isExpanded(node));
    else
        emit folderMenuWanted(globalPos);
}

void TreeMouse::tellAddress(const QModelIndex& node)
{
    emit statusText(addressOf(node));
}

QString TreeMouse::addressOf(const QModelIndex& node) const
{
    QString address;
    ignoringErrors([&] {
        if (node.isValid() && m_nodes.tag(node) == u"Url"_s)
            address = m_nodes.url(node);
    });
    return address;
}
