#include "bookmarks/ArchiveEditor.h"

#include "base/Prompt.h"
#include "base/WindowGuards.h"
#include "bookmarks/ArchiveRecords.h"
#include "bookmarks/ArchiveView.h"
#include "bookmarks/NodeKeys.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace {
bool isEmpty(const Thema& folder)
{
    return !folder.colBookmark() || folder.colBookmark()->IsEmpty();
}
} // namespace

BookCommands::Place BookCommands::resolve(const QModelIndex& node) const
{
    const auto folders = m.files.book().colThema();
    if (!node.isValid() || !folders)
        throw NotFoundError(ArchiveTree::key(node));
    Place place;
    qint16 left = 0;
    qint16 right = 0;
    ArchiveTree::GetLAndR_Indx(node, left, right);
    GetDirIdx(*folders, left, place.dirIdx);
    place.folder = folders->Item(place.dirIdx);
    if (m.tree.kind(node) == NodeKind::Bookmark) {
        GetBookmarkIdx(*place.folder->colBookmark(), right, place.bookmarkIdx);
        place.bookmark = place.folder->colBookmark()->Item(place.bookmarkIdx);
    }
    return place;
}

std::shared_ptr<Thema> BookCommands::selectedFolder() const
{
    const QModelIndex node = m.view.selectedNode();
    const NodeKind kind = m.tree.kind(node);
    const bool below = kind == NodeKind::Folder || kind == NodeKind::Bookmark;
    return below ? resolve(node).folder : nullptr;
}

std::shared_ptr<Bookmark> BookCommands::selectedBookmark() const
{
    const QModelIndex node = m.view.selectedNode();
    return m.tree.kind(node) == NodeKind::Bookmark ? resolve(node).bookmark : nullptr;
}

ArchiveSelection BookCommands::selection() const
{
    const QModelIndex node = m.view.selectedNode();
    switch (m.tree.kind(node)) {
    case NodeKind::Root:
        return ArchiveSelection::Root;
    case NodeKind::Folder:
        return m.tree.hasChildren(node) ? ArchiveSelection::Folder : ArchiveSelection::EmptyFolder;
    case NodeKind::Bookmark:
        return ArchiveSelection::Bookmark;
    case NodeKind::None:
        break;
    }
    return m.tree.hasChildren() ? ArchiveSelection::Nothing : ArchiveSelection::EmptyTree;
}

QModelIndex BookCommands::folderNode(const QModelIndex& node) const
{
    return m.tree.kind(node) == NodeKind::Bookmark ? node.parent() : node;
}

void BookCommands::markChanged(Thema& folder)
{
    folder.IsEdit(true);
    m.files.book().IsEdit(true);
}

bool BookCommands::IsNameFree(const QString& name) const
{
    return !m.tree.hasText(name);
}

QString BookCommands::GetNewDirName() const
{
    const QStringList texts = m.tree.texts(u"Neuer Ordner"_s);
    const QSet<QString> taken(texts.begin(), texts.end());
    return newDirName([&taken](const QString& name) { return !taken.contains(name); });
}

void BookCommands::addFolder()
{
    AddDirToArchive(GetNewDirName());
}

void BookCommands::AddDirToArchive(const QString& name)
{
    m.files.checkReadable();
    Book& book = m.files.book();
    const QModelIndex selected = m.view.selectedNode();
    const QModelIndex reference = selected.isValid() ? selected : m.tree.root();
    const NodeKind kind = m.tree.kind(reference);

    const qint32 newNr = book.GetNewKey();
    auto folder = std::make_shared<Thema>(m.files.programFolder());
    folder->Nr(newNr);
    folder->FileName(QString::number(newNr) + u".bkm"_s);
    folder->DirName(name);
    folder->Sequenz(newNr);

    if (kind != NodeKind::Root) {
        book.colThema()->AddAfter(resolve(reference).dirIdx, folder, themaKey(newNr));
    } else if (m.tree.hasChildren(reference)) {
        book.colThema()->AddBefore(1, folder, themaKey(newNr));
    } else {
        book.colThema(std::make_shared<ThemaCollection>());
        book.colThema()->Add(folder, themaKey(newNr));
    }
    book.IsEdit(true);
    if (kind == NodeKind::Bookmark)
        return; // there is no place for a folder beside a bookmark
    const int row = kind == NodeKind::Root ? 0 : reference.row() + 1;
    const QModelIndex node = m.tree.insertFolder(row, folder);
    m.view.expand(m.tree.root());
    m.view.StartLabelEdit(node);
}

void BookCommands::renameFolder()
{
    const QModelIndex node = m.view.selectedNode();
    if (m.tree.kind(node) != NodeKind::Folder)
        return;
    ArchiveFiles::checkReadable(*resolve(node).folder);
    m.view.StartLabelEdit(node);
}

DirNameCheck BookCommands::AfterLabelEdit(const QModelIndex& node, const QString& typed)
{
    const DropsDisabled guard(m.shell);
    const QString name = cleanDirName(typed);
    const auto check = checkDirName(node.data().toString(), name,
                                    [this](const QString& wanted) { return IsNameFree(wanted); });
    if (check == DirNameCheck::Accepted) {
        UpdateDir(resolve(node).folder, name);
        m.tree.refresh(node);
    }
    return check;
}

void BookCommands::UpdateDir(const std::shared_ptr<Thema>& folder, const QString& name)
{
    ArchiveFiles::checkReadable(*folder);
    folder->DirName(name);
    markChanged(*folder);
    m.tree.refresh(m.view.selectedNode());
}

bool BookCommands::confirmed(const Thema& folder) const
{
    if (isEmpty(folder))
        return true;
    const DropsDisabled guard(m.shell);
    return m.shell.prompt().askOkCancel(m.window,
                                        u"Der Ordner ist nicht leer, trotzdem löschen ?"_s,
                                        u"Meldung"_s, Prompt::Icon::Question);
}

void BookCommands::deleteFolder()
{
    const QPersistentModelIndex node = m.view.selectedNode();
    if (m.tree.kind(node) != NodeKind::Folder)
        return;
    m.files.checkReadable();
    const auto folder = resolve(node).folder;
    ArchiveFiles::checkReadable(*folder);
    // The question lets the rest of the program run: look again afterwards.
    if (!confirmed(*folder) || !node.isValid())
        return;
    const qint16 position = resolve(node).dirIdx;
    m.tree.removeFolder(node);
    m.files.book().DeleteThema(position);
    const QString problem = m.files.unwritten();
    if (!problem.isEmpty())
        throw Error(problem);
}

void BookCommands::addBookmark(const std::function<void(bool newBookmark)>& show)
{
    const auto folder = selectedFolder();
    if (!folder || !show)
        return;
    ArchiveFiles::checkReadable(*folder);
    const DropsDisabled guard(m.shell);
    show(true);
}

void BookCommands::editBookmark(const std::function<void(bool newBookmark)>& show)
{
    if (!selectedBookmark() || !show)
        return;
    const DropsDisabled guard(m.shell);
    show(false);
}

void BookCommands::AddBkmToArchive(const QString& title, const QString& url, const QString& info)
{
    const QModelIndex node = m.view.selectedNode();
    const Place place = resolve(node);
    ArchiveFiles::checkReadable(*place.folder);
    auto bookmark = std::make_shared<Bookmark>();
    bookmark->Nr(place.folder->GetNewKey());
    bookmark->Titel(title);
    bookmark->Url(url);
    bookmark->Info(info);
    // Behind the selected bookmark, or first: the position counts from 1.
    m.tree.insertBookmark(folderNode(node), place.bookmarkIdx, bookmark);
    markChanged(*place.folder);
}

void BookCommands::UpdateBookmark(const std::shared_ptr<Bookmark>& bookmark, const QString& title,
                                  const QString& url, const QString& info)
{
    if (!bookmark) {
        AddBkmToArchive(title, url, info);
        return;
    }
    const QModelIndex node = m.view.selectedNode();
    const auto folder = resolve(node).folder;
    bookmark->Titel(title);
    bookmark->Url(url);
    bookmark->Info(info);
    m.tree.refresh(node);
    markChanged(*folder);
}

void BookCommands::deleteBookmark()
{
    const QModelIndex node = m.view.selectedNode();
    if (m.tree.kind(node) != NodeKind::Bookmark)
        return;
    const Place place = resolve(node);
    m.tree.removeBookmark(m.tree.index(place.bookmarkIdx - 1, 0, node.parent()));
    markChanged(*place.folder);
}

void BookCommands::OpenAll()
{
    if (m.tree.kind(m.view.selectedNode()) != NodeKind::Folder)
        return;
    const auto bookmarks = selectedFolder()->colBookmark();
    if (!bookmarks)
        return;
    // A window that opens may let the archive change meanwhile.
    const BookmarkCollection all = *bookmarks;
    for (const auto& bookmark : all)
        m.shell.VisitUrl(bookmark->Url());
}

void BookCommands::OpenBookmark()
{
    if (const auto bookmark = selectedBookmark())
        m.shell.VisitUrl(bookmark->Url());
}
