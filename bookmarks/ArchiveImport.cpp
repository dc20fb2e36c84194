#include "bookmarks/ArchiveImport.h"

#include "base/RunCommand.h"
#include "bookmarks/ArchiveEditor.h"
#include "bookmarks/ArchiveView.h"
#include "bookmarks/frmImport.h"

#include <QLocale>

using namespace Qt::StringLiterals;

void ArchiveImport::ask(const BookmarkFile& file)
{
    loadIfUnseen();
    m_files.checkReadable();
    const ImportPlan plan = ImportPlan::of(file, ArchiveContents::of(m_files.book()));
    const DropsDisabled guard(m_shell);
    frmImport dialog(
        plan, [this, &plan] { take(plan); }, m_shell.prompt(), m_window);
    dialog.exec();
}

/// The first archive of all is in memory but not in the tree until it is loaded: a folder that
/// is added before takes its place.
void ArchiveImport::loadIfUnseen()
{
    const auto folders = m_files.book().colThema();
    const ArchiveTree& tree = m_view.tree();
    if (!folders || folders->IsEmpty() || tree.hasChildren(tree.root()))
        return;
    m_editor.load();
    m_view.expand(tree.root());
}

void ArchiveImport::take(const ImportPlan& plan)
{
    const ArchiveTree& tree = m_view.tree();
    const int row = tree.rowCount(tree.root());
    {
        const QString count = QLocale().toString(plan.added);
        const OneStep step(m_editor.steps(), plan.added == 1
                                                 ? u"1 Bookmark übernehmen"_s
                                                 : u"%1 Bookmarks übernehmen"_s.arg(count));
        QModelIndex last = row == 0 ? tree.root() : tree.index(row - 1, 0, tree.root());
        for (const ImportPlan::Folder& folder : plan.folders)
            last = m_editor.addFolder(last, folder.name, folder.bookmarks);
    }
    m_view.expand(tree.root());
    m_view.reachNode(tree.index(row, 0, tree.root()));
}
