#pragma once

#include "bookmarks/ArchiveTree.h"

#include <QTreeView>

class SiteIcons;

/// The tree on the screen: selection, images that follow expansion, label editing, keys
/// and mouse.
///
/// A left click on a folder opens or closes it; its box does the same without being a
/// click on the node. A press of the right button goes by the selection, which it leaves
/// alone.
class ArchiveView : public QTreeView {
    Q_OBJECT
public:
    /// `tree` and `icons` outlive the view. Bookmarks are shown with the icons of their pages
    /// where these are known.
    ArchiveView(ArchiveTree& tree, const SiteIcons& icons, QWidget* parent);
    ~ArchiveView() override;

    const ArchiveTree& tree() const { return m_tree; }
    /// The selected node; invalid when nothing is selected. The current node
    /// alone does not count: the focus makes one current that nobody selected.
    QModelIndex selectedNode() const;
    /// Selects this node alone, or none with an invalid index.
    void selectNode(const QModelIndex& node);
    /// Selects the node and brings it into sight, as if a key had reached it.
    void reachNode(const QModelIndex& node);

    /// Lets the user edit a label; the node becomes the selected one.
    void StartLabelEdit(const QModelIndex& node);
    bool isEditing() const { return state() == EditingState; }
    /// Ends label editing, if any, as Enter does.
    void commitLabel();

signals:
    /// The user has typed a label. Emitted once for each edit, never when it is cancelled.
    void labelEdited(const QModelIndex& node, const QString& text);
    /// While the user types a label: what it is by now.
    void labelTyped(const QString& text);
    /// The mouse is over this node, or over none; or a click or a key has reached it.
    void nodeReached(const QModelIndex& node);
    void escapePressed();
    /// F2.
    void renamePressed();
    void deletePressed();
    /// Ctrl+S.
    void savePressed();
    /// Ctrl+Z.
    void takeBackPressed();
    /// Ctrl+Shift+Z or Ctrl+Y.
    void repeatPressed();
    /// Enter or a double click: the selected bookmark is to be opened.
    void openWanted();
    /// The menu key, Shift+F10, or the right button while a node is selected.
    void menuWanted(const QPoint& globalPos);
    /// A folder was clicked with a button other than the left one.
    void wholeMenuWanted(const QPoint& globalPos);

protected:
    /// At least the width of the view, so that the whole row can be clicked.
    int sizeHintForColumn(int column) const override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    void walk(QKeyEvent& event);
    /// As the key "*" does: the node, and all folders below it.
    void expandBelow(const QModelIndex& node);
    bool pressed(const QMouseEvent& event);
    void released(const QMouseEvent& event);
    void nodeClicked(const QModelIndex& node, const QPoint& globalPos);

    ArchiveTree& m_tree;
    /// The last button pressed over the tree, and the node it was pressed on.
    Qt::MouseButton m_button = Qt::NoButton;
    QPersistentModelIndex m_pressed;
};
