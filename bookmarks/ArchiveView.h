#pragma once

#include "bookmarks/ArchiveTree.h"

#include <QTreeView>

/// The tree on the screen: selection, images that follow expansion, label
/// editing and keys.
class ArchiveView : public QTreeView {
    Q_OBJECT
public:
    /// `tree` outlives the view.
    ArchiveView(ArchiveTree& tree, QWidget* parent);
    ~ArchiveView() override;

    /// The selected node; invalid when nothing is selected. The current node
    /// alone does not count: the focus makes one current that nobody selected.
    QModelIndex selectedNode() const;
    /// Selects this node alone, or none with an invalid index.
    void selectNode(const QModelIndex& node);

    /// Lets the user edit a label; the node becomes the selected one.
    void StartLabelEdit(const QModelIndex& node);
    bool isEditing() const { return state() == EditingState; }
    /// Ends label editing, if any, as Enter does.
    void commitLabel();

signals:
    void labelEdited(const QModelIndex& node, const QString& text);
    /// A key has brought the selection to this node.
    void nodeReached(const QModelIndex& node);
    void escapePressed();
    /// F2.
    void renamePressed();
    void deletePressed();
    void enterPressed();
    /// The menu key, or Shift+F10.
    void menuPressed(const QPoint& globalPos);

protected:
    /// At least the width of the view, so that the whole row can be clicked.
    int sizeHintForColumn(int column) const override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    void walk(QKeyEvent& event);
    ArchiveTree& m_tree;
};
