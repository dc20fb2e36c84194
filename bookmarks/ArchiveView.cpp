#include "bookmarks/ArchiveView.h"

#include "base/GlyphIcon.h"
#include "base/RunCommand.h"
#include "base/ShownText.h"
#include "base/SiteIcons.h"

#include <QContextMenuEvent>
#include <QCursor>
#include <QHash>
#include <QHeaderView>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QStyledItemDelegate>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace {
/// Draws a node with its image and its text on one line, and edits a folder's label.
class NodeDelegate : public QStyledItemDelegate {
public:
    /// `edited` gets what was typed, once for each edit; nothing when the edit is cancelled.
    using Edited = std::function<void(const QModelIndex& node, const QString& text)>;

    /// `typed` gets what stands in the label after each key.
    NodeDelegate(const Edited& edited, const std::function<void(const QString& text)>& typed,
                 const SiteIcons& icons, QObject* parent)
        : QStyledItemDelegate(parent), m_icons(icons), m_edited(edited), m_typed(typed)
    {
        for (const QString& image : {u"Archiv"_s, u"Dir"_s, u"OpenDir"_s, u"Url"_s})
            m_images.insert(image, colouredIcon(u"archive/"_s + image));
    }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& node) const override
    {
        m_handedOver = false;
        QWidget* editor = QStyledItemDelegate::createEditor(parent, option, node);
        editor->setObjectName(u"LabelEdit"_s);
        if (const auto* line = qobject_cast<QLineEdit*>(editor))
            connect(line, &QLineEdit::textEdited, this, m_typed);
        return editor;
    }

    void setModelData(QWidget* editor, QAbstractItemModel* /*model*/,
                      const QModelIndex& node) const override
    {
        const auto* line = qobject_cast<QLineEdit*>(editor);
        if (line == nullptr || m_handedOver)
            return;
        m_handedOver = true;
        m_edited(node, line->text());
    }

    QString displayText(const QVariant& value, const QLocale& /*locale*/) const override
    {
        return oneLineText(value.toString());
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& node) const override
    {
        QStyledItemDelegate::initStyleOption(option, node);
        option->features |= QStyleOptionViewItem::HasDecoration;
        const QString image = node.data(ArchiveTree::ImageRole).toString();
        if (image == "Url"_L1)
            option->icon = m_icons.icon(node.data(ArchiveTree::AddressRole).toString());
        if (option->icon.isNull())
            option->icon = m_images.value(image);
    }

private:
    const SiteIcons& m_icons;
    Edited m_edited;
    std::function<void(const QString& text)> m_typed;
    QHash<QString, QIcon> m_images;
    /// Qt may commit the same editor twice: on Enter, and when it loses the focus.
    mutable bool m_handedOver = false;
};

bool pressedWithCtrl(const QKeyEvent& event, Qt::Key key)
{
    return event.key() == key && event.modifiers() == Qt::ControlModifier;
}
} // namespace

ArchiveView::ArchiveView(ArchiveTree& tree, const SiteIcons& icons, QWidget* parent)
    : QTreeView(parent), m_tree(tree)
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
    viewport()->setMouseTracking(true);

    const auto edited = [this](const QModelIndex& node, const QString& text) {
        emit labelEdited(node, text);
    };
    const auto typed = [this](const QString& text) { emit labelTyped(text); };
    setItemDelegate(new NodeDelegate(edited, typed, icons, this));
    connect(&icons, &SiteIcons::changed, viewport(), qOverload<>(&QWidget::update));
    connect(this, &QTreeView::expanded, this,
            [this](const QModelIndex& node) { m_tree.showOpen(node, true); });
    connect(this, &QTreeView::collapsed, this,
            [this](const QModelIndex& node) { m_tree.showOpen(node, false); });
    // This signal comes for the left button only, and not for a click on the box.
    connect(this, &QTreeView::clicked, this,
            [this](const QModelIndex& node) { nodeClicked(node, QCursor::pos()); });
    connect(this, &QTreeView::doubleClicked, this, [this] {
        if (m_button == Qt::LeftButton)
            emit openWanted();
    });
}

ArchiveView::~ArchiveView()
{
    // An editor that is destroyed with the view would still commit its text, through a
    // view of which only the base class is left.
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

void ArchiveView::reachNode(const QModelIndex& node)
{
    selectNode(node);
    scrollTo(node); // opens its folder
    emit nodeReached(node);
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
    // A key that the editor has not taken gets here as the view is its parent.
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
        emit openWanted();
        return;
    default:
        break;
    }
    if (event->matches(QKeySequence::Save))
        emit savePressed();
    else if (event->matches(QKeySequence::Undo))
        emit takeBackPressed();
    else if (event->matches(QKeySequence::Redo) || pressedWithCtrl(*event, Qt::Key_Y))
        emit repeatPressed();
    else if (event->key() == Qt::Key_Asterisk)
        expandBelow(selectedNode());
    else
        walk(*event);
}

void ArchiveView::expandBelow(const QModelIndex& node)
{
    // Qt (6.4) would note every bookmark as expanded, too, which takes most of the time.
    const WaitPointer wait(window());
    scheduleDelayedItemsLayout(); // the rows are laid out once, and not for each folder
    expand(node);
    if (m_tree.kind(node) == NodeKind::Root)
        for (int row = 0; row < m_tree.rowCount(node); ++row)
            expand(m_tree.index(row, 0, node));
    executeDelayedItemsLayout();
}

void ArchiveView::walk(QKeyEvent& event)
{
    const QModelIndex before = selectedNode();
    // Qt would move from the first node, which is current, even if nothing is selected.
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
    emit menuWanted(viewport()->mapToGlobal(corner));
}

bool ArchiveView::viewportEvent(QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (pressed(*static_cast<QMouseEvent*>(event)))
            return true;
        break;
    case QEvent::MouseButtonRelease:
        released(*static_cast<QMouseEvent*>(event));
        break;
    case QEvent::MouseMove:
        emit nodeReached(indexAt(static_cast<QMouseEvent*>(event)->position().toPoint()));
        break;
    case QEvent::ContextMenu:
        // With the mouse the menu has opened already, at the press.
        if (static_cast<QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Mouse)
            return true;
        break;
    default:
        break;
    }
    return QTreeView::viewportEvent(event);
}

bool ArchiveView::pressed(const QMouseEvent& event)
{
    m_button = event.button();
    m_pressed = QModelIndex();
    if (m_button == Qt::RightButton && selectionModel()->hasSelection()) {
        // The press must not change the selection; and the menu may end the window.
        emit menuWanted(event.globalPosition().toPoint());
        return true;
    }
    m_pressed = indexAt(event.position().toPoint());
    return false;
}

void ArchiveView::released(const QMouseEvent& event)
{
    if (event.button() == Qt::LeftButton || event.button() != m_button)
        return;
    const QModelIndex node = indexAt(event.position().toPoint());
    if (node.isValid() && node == m_pressed)
        nodeClicked(node, event.globalPosition().toPoint());
}

void ArchiveView::nodeClicked(const QModelIndex& node, const QPoint& globalPos)
{
    const NodeKind kind = m_tree.kind(node);
    if (kind == NodeKind::Folder || kind == NodeKind::Bookmark)
        emit nodeReached(node);
    if (kind != NodeKind::Folder)
        return;
    if (m_button == Qt::LeftButton)
        setExpanded(node, !isExpanded(node));
    else
        emit wholeMenuWanted(globalPos);
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
