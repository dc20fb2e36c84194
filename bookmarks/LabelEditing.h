#pragma once

#include <QObject>

class ArchiveEditor;
class ArchiveTree;
class ArchiveView;
class QModelIndex;
class Shell;

/// Gives folders the names that the user types into their labels, and refuses those that
/// they cannot have.
class LabelEditing : public QObject {
    Q_OBJECT
public:
    /// All outlive this.
    LabelEditing(Shell& shell, ArchiveView& view, ArchiveTree& tree, ArchiveEditor& editor);

    /// Ends label editing, if any, as Enter does. False when the label is refused.
    bool commit();

signals:
    /// Emitted once the label's editor is closed: the user is to be told, and to go on
    /// editing.
    void refused(const QPersistentModelIndex& node, const QString& message);

private:
    void AfterLabelEdit(const QModelIndex& node, const QString& typed);
    /// Gives the node's folder the name, or returns what the user is told about it.
    QString takeName(const QModelIndex& node, const QString& typed);

    Shell& m_shell;
    ArchiveView& m_view;
    ArchiveTree& m_tree;
    ArchiveEditor& m_editor;
    bool m_refused = false;
};
