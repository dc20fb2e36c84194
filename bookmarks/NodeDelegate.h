#pragma once

#include <QHash>
#include <QIcon>
#include <QStyledItemDelegate>

/// Draws a node with its image and its text on one line, and edits a folder's
/// label. What was typed is handed over once for each edit; nothing is handed
/// over when the edit is cancelled.
class NodeDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    explicit NodeDelegate(QObject* parent);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& node) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& node) const override;
    QString displayText(const QVariant& value, const QLocale& locale) const override;

signals:
    void labelEdited(const QModelIndex& node, const QString& text) const;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& node) const override;

private:
    QHash<QString, QIcon> m_images;
    mutable bool m_handedOver = false;
};
