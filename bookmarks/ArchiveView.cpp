#include "bookmarks/ArchiveView.h"

#include "bookmarks/NodeDelegate.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>

ArchiveView::ArchiveView(ArchiveTree& tree, QWidget* parent) : QTreeView(parent), m_tree(tree)
{
    setModel(&tree);
    setFrameShape(QFrame::NoFrame);
    setHeaderHidden(true);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    header()->setResizeContentsPrecision(0); // the rows in sight are enough
    setUniformRowHeights(true);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setExpandsOnDoubleClick(false);
    setTabKeyNavigation(false);

    auto* delegate = new NodeDelegate(this);
    setItemDelegate(delegate);
    connect(delegate, &NodeDelegate::labelEdited, this, &ArchiveView::labelEdited);
    connect(this, &QTreeView::expanded, this,
            [this](const QModelIndex& node) { m_tree.showOpen(node, true); });
    connect(this, &QTreeView::collapsed, this,
            [this](const QModelIndex& node) { m_tree.showOpen(node, false); });
}

ArchiveView::~ArchiveView()
{
    // An editor that died with the view would hand its text to half a view.
    if (isEditing())
        ArchiveView::closeEditor(indexWidget(currentIndex()),
                                 QAbstractItemDelegate::RevertModelCache);
}

QModelIndex ArchiveView::selectedNode() const
{
    return selectionModel()->selectedIndexes().value(0);
}

void ArchiveView::selectNode(const QModelIndex& node)
{
    if (node.isValid())
        selectionModel()->setCurrentIndex(node, QItemSelectionModel::ClearAndSelect);
    else
        selectionModel()->clear();
}

void ArchiveView::StartLabelEdit(const QModelIndex& node)
{
    if (!node.isValid() || isEditing())
        return;
    selectNode(node);
    scrollTo(node);
    m_tree.setEditable(node);
    edit(node, AllEditTriggers, nullptr);
}

void ArchiveView::commitLabel()
{
    if (!isEditing())
        return;
    if (QWidget* editor = indexWidget(currentIndex())) {
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

int ArchiveView::sizeHintForColumn(int column) const
{
    return std::max(QTreeView::sizeHintForColumn(column), viewport()->width());
}

void ArchiveView::resizeEvent(QResizeEvent* event)
{
    QTreeView::resizeEvent(event);
    resizeColumnToContents(0);
}

void ArchiveView::keyPressEvent(QKeyEvent* event)
{
    // What the editor did not want is not meant for the tree either.
    if (isEditing())
        return;
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    switch (plain ? event->key() : 0) {
    case Qt::Key_Escape:
        emit escapePressed();
        return;
    case Qt::Key_F2:
        emit renamePressed();
        return;
    case Qt::Key_Delete:
        emit deletePressed();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit enterPressed();
        return;
    default:
        walk(*event);
    }
}

void ArchiveView::walk(QKeyEvent& event)
{
    const QModelIndex before = selectedNode();
    // With nothing selected the toolkit starts from the first node nevertheless.
    const QList<int> fromNothing{Qt::Key_Down, Qt::Key_Up, Qt::Key_Home, Qt::Key_PageDown,
                                 Qt::Key_PageUp};
    if (!before.isValid() && fromNothing.contains(event.key()))
        selectNode(m_tree.root());
    else
        QTreeView::keyPressEvent(&event);
    if (const QModelIndex node = selectedNode(); node != before)
        emit nodeReached(node);
}

void ArchiveView::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() != QContextMenuEvent::Keyboard || isEditing())
        return;
    const QRect node = visualRect(selectedNode());
    const QPoint corner = node.isValid() ? node.center() : viewport()->rect().center();
    emit menuPressed(viewport()->mapToGlobal(corner));
}

void ArchiveView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint)
{
    // Tab ends the edit; it does not select the next node.
    if (hint == QAbstractItemDelegate::EditNextItem ||
        hint == QAbstractItemDelegate::EditPreviousItem)
        hint = QAbstractItemDelegate::NoHint;
    QTreeView::closeEditor(editor, hint);
    m_tree.setEditable({});
}
