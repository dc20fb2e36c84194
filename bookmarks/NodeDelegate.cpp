#include "bookmarks/NodeDelegate.h"

#include "base/ShownText.h"
#include "bookmarks/ArchiveTree.h"

#include <QLineEdit>

using namespace Qt::StringLiterals;

NodeDelegate::NodeDelegate(QObject* parent) : QStyledItemDelegate(parent)
{
    for (const QString& image : {u"Archiv"_s, u"Dir"_s, u"OpenDir"_s, u"Url"_s})
        m_images.insert(image, QIcon(u":/icons/archive/%1.svg"_s.arg(image)));
}

QWidget* NodeDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                    const QModelIndex& node) const
{
    m_handedOver = false;
    QWidget* editor = QStyledItemDelegate::createEditor(parent, option, node);
    editor->setObjectName(u"LabelEdit"_s);
    return editor;
}

void NodeDelegate::setModelData(QWidget* editor, QAbstractItemModel* /*model*/,
                                const QModelIndex& node) const
{
    const auto* line = qobject_cast<QLineEdit*>(editor);
    if (line == nullptr || m_handedOver)
        return;
    m_handedOver = true;
    emit labelEdited(node, line->text());
}

QString NodeDelegate::displayText(const QVariant& value, const QLocale& /*locale*/) const
{
    return oneLineText(value.toString());
}

void NodeDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& node) const
{
    QStyledItemDelegate::initStyleOption(option, node);
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->icon = m_images.value(node.data(ArchiveTree::ImageRole).toString());
}
