#include "bookmarks/LabelEditing.h"

#include "base/RunCommand.h"
#include "bookmarks/ArchiveEditor.h"
#include "bookmarks/ArchiveView.h"
#include "bookmarks/FolderNames.h"

LabelEditing::LabelEditing(Shell& shell, ArchiveView& view, ArchiveTree& tree,
                           ArchiveEditor& editor)
    : m_shell(shell), m_view(view), m_tree(tree), m_editor(editor)
{
    connect(&view, &ArchiveView::labelEdited, this, &LabelEditing::AfterLabelEdit);
}

bool LabelEditing::commit()
{
    m_refused = false;
    m_view.commitLabel();
    return !m_refused;
}

void LabelEditing::AfterLabelEdit(const QModelIndex& node, const QString& typed)
{
    runCommand(m_shell, m_view.window(), [this, &node, &typed] {
        const QString message = takeName(node, typed);
        m_refused = !message.isEmpty();
        if (!m_refused)
            return;
        // Later, as the editor is still open and has to close before the message opens.
        const QPersistentModelIndex its = node;
        QMetaObject::invokeMethod(
            this, [this, its, message] { emit refused(its, message); }, Qt::QueuedConnection);
    });
}

QString LabelEditing::takeName(const QModelIndex& node, const QString& typed)
{
    const DropsDisabled guard(m_shell);
    const QString name = cleanDirName(typed);
    const auto isFree = [this](const QString& wanted) { return m_tree.IsNameFree(wanted); };
    const DirNameCheck check = checkDirName(node.data().toString(), name, isFree);
    if (check == DirNameCheck::Accepted)
        m_editor.renameFolder(m_editor.resolve(node).folder, name);
    return dirNameMessage(check, name);
}
