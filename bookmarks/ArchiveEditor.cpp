#include "bookmarks/ArchiveEditor.h"

#include "base/WholeNumber.h"
#include "bookmarks/ArchiveRecords.h"
#include "bookmarks/ArchiveTree.h"
#include "bookmarks/FolderNames.h"

#include <QSet>

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

void ArchiveEditor::markChanged(Thema& folder)
{
    folder.IsEdit(true);
    m_files.book().IsEdit(true);
}

QString ArchiveEditor::GetNewDirName() const
{
    const QStringList texts = m_tree.texts(u"Neuer Ordner"_s);
    const QSet<QString> taken(texts.begin(), texts.end());
    return newDirName([&taken](const QString& name) { return !taken.contains(name); });
}

QModelIndex ArchiveEditor::addFolder(const QModelIndex& reference, const QString& name)
{
    m_files.checkReadable();
    Book& book = m_files.book();
    const NodeKind kind = m_tree.kind(reference);

    const qint32 newNr = book.GetNewKey();
    auto folder = std::make_shared<Thema>(m_files.programFolder());
    folder->Nr(newNr);
    folder->FileName(QString::number(newNr) + u".bkm"_s);
    folder->DirName(name);
    folder->Sequenz(newNr);

    if (kind != NodeKind::Root) {
        book.colThema()->AddAfter(resolve(reference).dirIdx, folder, themaKey(newNr));
    } else if (m_tree.hasChildren(reference)) {
        book.colThema()->AddBefore(1, folder, themaKey(newNr));
    } else {
        book.colThema(std::make_shared<ThemaCollection>());
        book.colThema()->Add(folder, themaKey(newNr));
    }
    book.IsEdit(true);
    if (kind == NodeKind::Bookmark)
        return {};
    return m_tree.insertFolder(kind == NodeKind::Root ? 0 : reference.row() + 1, folder);
}

void ArchiveEditor::renameFolder(Thema& folder, const QString& name)
{
    ArchiveFiles::checkReadable(folder);
    folder.DirName(name);
    markChanged(folder);
}

void ArchiveEditor::removeFolder(const QModelIndex& node)
{
    const qint16 position = resolve(node).dirIdx;
    m_tree.removeFolder(node);
    m_files.book().DeleteThema(position);
    if (const QString problem = m_files.unwritten(); !problem.isEmpty())
        throw Error(problem);
}

void ArchiveEditor::addBookmark(const QModelIndex& node, const QString& title, const QString& url,
                                const QString& info)
{
    const Place place = resolve(node);
    ArchiveFiles::checkReadable(*place.folder);
    auto bookmark = std::make_shared<Bookmark>();
    bookmark->Nr(place.folder->GetNewKey());
    bookmark->Titel(title);
    bookmark->Url(url);
    bookmark->Info(info);
    const QModelIndex folderNode = place.bookmark ? node.parent() : node;
    // Positions count from 1 and rows from 0, so this is the row behind the bookmark.
    m_tree.insertBookmark(folderNode, place.bookmarkIdx, bookmark);
    markChanged(*place.folder);
}

void ArchiveEditor::changeBookmark(const QModelIndex& node, Bookmark& bookmark,
                                   const QString& title, const QString& url, const QString& info)
{
    const auto folder = resolve(node).folder;
    bookmark.Titel(title);
    bookmark.Url(url);
    bookmark.Info(info);
    m_tree.refresh(node);
    markChanged(*folder);
}

void ArchiveEditor::removeBookmark(const QModelIndex& node)
{
    const Place place = resolve(node);
    m_tree.removeBookmark(m_tree.index(place.bookmarkIdx - 1, 0, node.parent()));
    markChanged(*place.folder);
}
