#pragma once

#include <QObject>
#include <QPersistentModelIndex>
#include <QTimer>

class ArchiveEditor;
class ArchiveTree;
class ElidedLabel;
class QLabel;
class QMainWindow;

/// The status line of the archive window: the address of the bookmark that was reached
/// last, or for some seconds what a command has done.
class ArchiveStatus : public QObject {
    Q_OBJECT
public:
    /// `tree` and `editor` outlive this, which belongs to the window.
    ArchiveStatus(const ArchiveTree& tree, const ArchiveEditor& editor, QMainWindow* window);

    /// Shows the address of a bookmark; nothing for any other node.
    void showNode(const QModelIndex& node);
    /// Shows the text until the user has had time to read it, or reaches a bookmark.
    void showText(const QString& text);
    /// A sign to the right of the texts says whether the archive can only be looked at.
    void showProtected(bool isProtected);

private:
    void showAddress();

    const ArchiveTree& m_tree;
    const ArchiveEditor& m_editor;
    ElidedLabel* m_panel;
    QLabel* m_protected;
    QPersistentModelIndex m_node;
    /// Runs while a text is shown.
    QTimer m_reading;
};
