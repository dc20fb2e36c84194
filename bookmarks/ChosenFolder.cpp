#include "bookmarks/ChosenFolder.h"

#include "base/Errors.h"
#include "bookmarks/FolderNames.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
QString quoted(const QString& name)
{
    return u'„' + oneLineText(name) + u'“';
}
} // namespace

std::vector<ChosenFolder::Folder> ChosenFolder::folders(const QString& first) const
{
    const ArchiveTree& tree = m_archive.tree;
    std::vector<Folder> all;
    for (int row = 0; row < tree.rowCount(tree.root()); ++row) {
        const auto folder = tree.folder(tree.index(row, 0, tree.root()));
        if (!folder->refusesChanges() && !folder->isWriteProtected())
            all.push_back({folder->FileName(), folder->DirName()});
    }
    const auto its = std::find_if(all.begin(), all.end(), [&first](const Folder& folder) {
        return folder.fileName == first;
    });
    if (its != all.end())
        std::rotate(all.begin(), its, its + 1);
    return all;
}

void ChosenFolder::choose(const QString& fileName)
{
    m_isNew = false;
    m_fileName = fileName;
}

void ChosenFolder::chooseNew(const QString& typedName)
{
    m_isNew = true;
    m_fileName.clear();
    m_newName = cleanDirName(typedName);
}

QString ChosenFolder::nameProblem() const
{
    if (!m_isNew)
        return {};
    if (m_newName.isEmpty())
        return dirNameMessage(DirNameCheck::Empty, m_newName);
    const auto isFree = [this](const QString& name) { return m_archive.tree.IsNameFree(name); };
    return dirNameMessage(checkDirName({}, m_newName, isFree), m_newName);
}

QStringList ChosenFolder::foldersWith(const QString& url) const
{
    const ArchiveTree& tree = m_archive.tree;
    QStringList names;
    for (int row = 0; row < tree.rowCount(tree.root()); ++row) {
        const auto folder = tree.folder(tree.index(row, 0, tree.root()));
        if (folder->holds(url))
            names << folder->DirName();
    }
    return names;
}

QString ChosenFolder::name() const
{
    const auto folder = selectedFolder();
    return folder ? folder->DirName() : m_newName;
}

std::shared_ptr<Thema> ChosenFolder::selectedFolder() const
{
    return m_archive.tree.folder(folderNode());
}

QModelIndex ChosenFolder::folderNode() const
{
    const ArchiveTree& tree = m_archive.tree;
    for (int row = 0; !m_isNew && row < tree.rowCount(tree.root()); ++row) {
        const QModelIndex node = tree.index(row, 0, tree.root());
        if (tree.folder(node)->FileName() == m_fileName)
            return node;
    }
    return {};
}

void ChosenFolder::AddBkmToArchive(const QString& title, const QString& url, const QString& info)
{
    if (const QString problem = nameProblem(); !problem.isEmpty())
        throw Error(problem);
    ArchiveTree& tree = m_archive.tree;
    const std::vector<BookmarkTexts> bookmarks{{title, url, info}};
    const QModelIndex node =
        m_isNew ? tree.index(0, 0, m_archive.editor.addFolder(tree.root(), m_newName, bookmarks))
                : m_archive.editor.addBookmarks(folderNode(), bookmarks);
    const QString fileName = tree.folder(node)->FileName();
    m_added(node);
    choose(fileName);
}

void ChosenFolder::UpdateBookmark(const std::shared_ptr<Bookmark>& /*bookmark*/,
                                  const QString& title, const QString& url, const QString& info)
{
    AddBkmToArchive(title, url, info);
}

QString addedText(const QString& folder)
{
    return u"In "_s + quoted(folder) + u" eingefügt"_s;
}

QString knownInText(const QStringList& folders)
{
    if (folders.isEmpty())
        return {};
    QString text = u"Die Adresse ist schon im Archiv, in "_s + quoted(folders.constFirst());
    if (folders.size() == 2)
        text += u" und "_s + quoted(folders.constLast());
    else if (folders.size() > 2)
        text += u" und %1 weiteren Ordnern"_s.arg(folders.size() - 1);
    return text + u'.';
}
