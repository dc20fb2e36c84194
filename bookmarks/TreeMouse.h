#pragma once

#include <QObject>
#include <QPersistentModelIndex>

#include <functional>

class QMouseEvent;
class QPoint;
class QTreeView;

/// What a tree of folders and bookmarks does under the mouse. A left click on a
/// folder opens or closes it; its box does the same without being a click on the
/// node. A press of the right button goes by the selection, which it leaves alone.
///
/// An object of this class belongs to its view.
class TreeMouse : public QObject {
    Q_OBJECT
public:
    struct Nodes {
        /// "Archiv", "Dir" or "Url".
        std::function<QString(const QModelIndex&)> tag;
        /// The address of a bookmark's node. May throw: then the address is empty.
        std::function<QString(const QModelIndex&)> url;
    };

    TreeMouse(QTreeView& view, const Nodes& nodes);

    bool eventFilter(QObject* watched, QEvent* event) override;
    /// Tells the address of a bookmark's node, none for any other.
    void tellAddress(const QModelIndex& node);

signals:
    /// The address under the mouse, or empty.
    void statusText(const QString& text);
    /// The right button was pressed while a node is selected.
    void contextMenuWanted(const QPoint& globalPos);
    /// A folder was clicked with a button other than the left one.
    void folderMenuWanted(const QPoint& globalPos);
    /// A double click.
    void openWanted();

private:
    bool pressed(const QMouseEvent& event);
    void released(const QMouseEvent& event);
    void nodeClicked(const QModelIndex& node, const QPoint& globalPos);
    QString addressOf(const QModelIndex& node) const;

    QTreeView& m_view;
    Nodes m_nodes;
    /// The last button pressed over the tree.
    Qt::MouseButton m_button = Qt::NoButton;
    /// Where it was pressed.
    QPersistentModelIndex m_pressed;
};
