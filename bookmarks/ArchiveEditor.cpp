#include "bookmarks/ArchiveEditor.h"

#include "base/WholeNumber.h"
#include "bookmarks/ArchiveRecords.h"
#include "bookmarks/ArchiveTree.h"
#include "bookmarks/FolderNames.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
template <typename Collection>
qint16 positionOf(const Collection& items, qint32 number)
{
    qint32 position = 0;
    for (const auto& item : items) {
        ++position;
        if (item->Nr() == number)
            return toInt16(position);
    }
    return 0;
}

/// Bookmarks with the next numbers of the folder, which does not hold them yet.
std::vector<std::shared_ptr<Bookmark>> newBookmarks(Thema& folder,
                                                    const std::vector<BookmarkTexts>& texts)
{
    std::vector<std::shared_ptr<Bookmark>> bookmarks;
    bookmarks.reserve(texts.size());
    for (const BookmarkTexts& its : texts) {
        auto bookmark = std::make_shared<Bookmark>();
        bookmark->Nr(folder.GetNewKey());
        bookmark->Titel(its.titel);
        bookmark->Url(its.url);
        bookmark->Info(its.info);
        bookmarks.push_back(std::move(bookmark));
    }
    return bookmarks;
}

/// A file may hold numbers above the count of its bookmarks.
void checkNumbersFree(const Thema& folder, const std::vector<std::shared_ptr<Bookmark>>& bookmarks)
{
    if (!folder.colBookmark())
        return;
    for (const auto& bookmark : bookmarks)
        if (const QString key = bookmarkKey(folder.Nr(), bookmark->Nr());
            folder.colBookmark()->Contains(key))
            throw DuplicateKeyError(key);
}
} // namespace

void ArchiveEditor::GetDirIdx(const ThemaCollection& folders, qint32 number, qint16& position)
{
    position = positionOf(folders, number);
}

void ArchiveEditor::GetBookmarkIdx(const BookmarkCollection& bookmarks, qint16 number,
                                   qint16& position)
{
    position = positionOf(bookmarks, number);
}

ArchiveEditor::Place ArchiveEditor::resolve(const QModelIndex& node) const
{
    const auto folders = m_files.book().colThema();
    if (!node.isValid() || !folders)
        throw NotFoundError(ArchiveTree::key(node));
    Place place;
    qint16 left = 0;
    qint16 right = 0;
    ArchiveTree::GetLAndR_Indx(node, left, right);
    GetDirIdx(*folders, left, place.dirIdx);
    place.folder = folders->Item(place.dirIdx);
    if (m_tree.kind(node) == NodeKind::Bookmark) {
        GetBookmarkIdx(*place.folder->colBookmark(), right, place.bookmarkIdx);
        place.bookmark = place.folder->colBookmark()->Item(place.bookmarkIdx);
    }
    return place;
}

QString ArchiveEditor::load()
{
    QString problem = m_files.load();
    m_tree.build(m_files.shownFolders().get());
    m_steps.clear();
    return problem;
}

QString ArchiveEditor::save()
{
    QString problem = m_files.save();
    m_steps.noteSaved(problem.isEmpty());
    return problem;
}

QString ArchiveEditor::GetNewDirName() const
{
    const QStringList texts = m_tree.texts(u"Neuer Ordner"_s);
    const QSet<QString> taken(texts.begin(), texts.end());
    return newDirName([&taken](const QString& name) { return !taken.contains(name); });
}

QModelIndex ArchiveEditor::addFolder(const QModelIndex& reference, const QString& name,
                                     const std::vector<BookmarkTexts>& bookmarks)
{
    m_files.checkReadable();
    const NodeKind kind = m_tree.kind(reference);
    FolderPlace place;
    if (kind != NodeKind::Root) {
        place.position = addWhole(resolve(reference).dirIdx, 1);
        place.row = kind == NodeKind::Bookmark ? -1 : reference.row() + 1;
    } else if (m_tree.hasChildren(reference)) {
        place.position = 1;
    }

    const qint32 newNr = m_files.book().GetNewKey();
    auto folder = std::make_shared<Thema>(m_files.programFolder());
    folder->Nr(newNr);
    folder->FileName(QString::number(newNr) + u".bkm"_s);
    folder->DirName(name);
    folder->Sequenz(newNr);
    if (!bookmarks.empty())
        folder->colBookmark(std::make_shared<BookmarkCollection>());
    for (const auto& bookmark : newBookmarks(*folder, bookmarks))
        folder->colBookmark()->Add(bookmark, bookmarkKey(newNr, bookmark->Nr()));
    return m_steps.run(addedFolder(m_steps.archive(), place, folder));
}

void ArchiveEditor::renameFolder(const std::shared_ptr<Thema>& folder, const QString& name)
{
    ArchiveFiles::checkReadable(*folder);
    m_steps.run(renamedFolder(m_steps.archive(), folder, name));
}

void ArchiveEditor::removeFolder(const QModelIndex& node)
{
    const Place place = resolve(node);
    m_files.checkReadable();
    ArchiveFiles::checkReadable(*place.folder);
    m_steps.run(removedFolder(m_steps.archive(), {place.dirIdx, node.row()}, place.folder));
    if (const QString& problem = m_steps.archive().problem; !problem.isEmpty())
        throw Error(problem);
}

QModelIndex ArchiveEditor::addBookmarks(const QModelIndex& node,
                                        const std::vector<BookmarkTexts>& bookmarks)
{
    const Place place = resolve(node);
    ArchiveFiles::checkReadable(*place.folder);
    if (bookmarks.empty())
        return {};
    const auto added = newBookmarks(*place.folder, bookmarks);
    checkNumbersFree(*place.folder, added);
    // Positions count from 1 and rows from 0, so this is the row behind the bookmark.
    return m_steps.run(addedBookmarks(m_steps.archive(), place.folder, place.bookmarkIdx, added));
}

void ArchiveEditor::changeBookmark(const QModelIndex& node,
                                   const std::shared_ptr<Bookmark>& bookmark,
                                   const BookmarkTexts& texts)
{
    const auto folder = resolve(node).folder;
    ArchiveFiles::checkReadable(*folder);
    const BookmarkCollection& all = *folder->colBookmark();
    const auto its = std::find(all.begin(), all.end(), bookmark);
    if (its == all.end())
        throw NotFoundError(bookmark->Titel());
    const auto row = static_cast<int>(its - all.begin());
    m_steps.run(changedBookmark(m_steps.archive(), folder, row, texts));
}

void ArchiveEditor::removeBookmark(const QModelIndex& node)
{
    const Place place = resolve(node);
    ArchiveFiles::checkReadable(*place.folder);
    m_steps.run(removedBookmark(m_steps.archive(), place.folder, place.bookmarkIdx - 1));
}
