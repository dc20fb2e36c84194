#include "bookmarks/ArchiveChanges.h"

#include "base/ShownText.h"
#include "bookmarks/ArchiveFiles.h"
#include "bookmarks/ArchiveRecords.h"
#include "bookmarks/ArchiveTree.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
/// What is done with something, with the verb at the end: a line that is too narrow leaves out
/// the middle of its text.
QString textOf(const QString& kind, const QString& name, const QString& verb)
{
    return kind + u" „"_s + oneLineText(name) + u"“ "_s + verb;
}

class ArchiveChange : public QUndoCommand {
protected:
    ArchiveChange(ChangedArchive& archive, const std::shared_ptr<Thema>& folder,
                  const QString& text)
        : QUndoCommand(text), m_archive(archive), m_folder(folder)
    {
    }

    ArchiveTree& tree() const { return m_archive.tree; }
    Book& book() const { return m_archive.files.book(); }
    const std::shared_ptr<Thema>& folder() const { return m_folder; }

    void changed(const QModelIndex& node)
    {
        m_folder->IsEdit(true);
        book().IsEdit(true);
        m_archive.isSaved = false;
        m_archive.problem.clear();
        reached(node);
    }
    void reached(const QModelIndex& node) { m_archive.reached = node; }
    void saved(const QString& problem)
    {
        m_archive.isSaved = true;
        m_archive.problem = problem;
    }
    ArchiveFiles& files() const { return m_archive.files; }
    /// The node at this row, or that of the last row before it, or `parent`.
    QModelIndex beside(int row, const QModelIndex& parent) const
    {
        const int last = tree().rowCount(parent) - 1;
        return last < 0 ? parent : tree().index(std::min(row, last), 0, parent);
    }

private:
    ChangedArchive& m_archive;
    std::shared_ptr<Thema> m_folder;
};

/// A folder that comes or goes.
class FolderChange : public ArchiveChange {
protected:
    FolderChange(ChangedArchive& archive, const FolderPlace& place,
                 const std::shared_ptr<Thema>& folder, const QString& text)
        : ArchiveChange(archive, folder, text), m_place(place)
    {
    }

    const FolderPlace& place() const { return m_place; }

    void insert()
    {
        ThemaCollection& folders = *book().colThema();
        const QString key = themaKey(folder()->Nr());
        if (m_place.position > folders.Count() || m_place.position == 0)
            folders.Add(folder(), key);
        else
            folders.AddBefore(m_place.position, folder(), key);
        changed(m_place.row < 0 ? QModelIndex() : tree().insertFolder(m_place.row, folder()));
    }

    void removeNode()
    {
        if (m_place.row >= 0)
            tree().removeFolder(tree().index(m_place.row, 0, tree().root()));
    }

    QModelIndex nodeBeside() const { return beside(std::max(m_place.row, 0), tree().root()); }

private:
    FolderPlace m_place;
};

class AddedFolder : public FolderChange {
public:
    AddedFolder(ChangedArchive& archive, const FolderPlace& place,
                const std::shared_ptr<Thema>& folder)
        : FolderChange(archive, place, folder,
                       textOf(u"Ordner"_s, folder->DirName(), u"hinzufügen"_s)),
          m_before(book().colThema())
    {
    }

    void redo() override
    {
        if (place().position == 0)
            book().colThema(std::make_shared<ThemaCollection>());
        insert();
    }

    void undo() override
    {
        removeNode();
        if (place().position == 0)
            book().colThema(m_before);
        else
            book().colThema()->Remove(place().position);
        changed(nodeBeside());
    }

private:
    std::shared_ptr<ThemaCollection> m_before;
};

class RemovedFolder : public FolderChange {
public:
    RemovedFolder(ChangedArchive& archive, const FolderPlace& place,
                  const std::shared_ptr<Thema>& folder)
        : FolderChange(archive, place, folder,
                       textOf(u"Ordner"_s, folder->DirName(), u"löschen"_s)),
          m_bookmarks(folder->colBookmark())
    {
    }

    void redo() override
    {
        removeNode();
        folder()->colBookmark(nullptr); // deleting would empty it
        book().DeleteThema(place().position);
        reached(nodeBeside());
        saved(files().unwritten());
    }

    void undo() override
    {
        folder()->colBookmark(m_bookmarks);
        insert();
        saved(files().save());
    }

private:
    std::shared_ptr<BookmarkCollection> m_bookmarks;
};

class RenamedFolder : public ArchiveChange {
public:
    RenamedFolder(ChangedArchive& archive, const std::shared_ptr<Thema>& folder,
                  const QString& name)
        : ArchiveChange(archive, folder, textOf(u"Ordner in"_s, name, u"umbenennen"_s)),
          m_other(name)
    {
    }

    void redo() override
    {
        const QString before = folder()->DirName();
        folder()->DirName(m_other);
        m_other = before;
        const QModelIndex node = tree().nodeOf(*folder());
        tree().refresh(node);
        changed(node);
    }
    void undo() override { redo(); }

private:
    QString m_other;
};

class AddedBookmarks : public ArchiveChange {
public:
    AddedBookmarks(ChangedArchive& archive, const std::shared_ptr<Thema>& folder, int row,
                   const std::vector<std::shared_ptr<Bookmark>>& bookmarks)
        : ArchiveChange(archive, folder,
                        bookmarks.size() == 1
                            ? textOf(u"Bookmark"_s, bookmarks[0]->Titel(), u"hinzufügen"_s)
                            : u"%1 Bookmarks hinzufügen"_s.arg(bookmarks.size())),
          m_row(row), m_bookmarks(bookmarks)
    {
    }

    void redo() override
    {
        m_madeCollection = !folder()->colBookmark();
        changed(tree().insertBookmarks(tree().nodeOf(*folder()), m_row, m_bookmarks));
    }

    void undo() override
    {
        const QModelIndex node = tree().nodeOf(*folder());
        tree().removeBookmarks(node, m_row, static_cast<int>(m_bookmarks.size()));
        // Without a collection a folder has no file when it is saved.
        if (m_madeCollection)
            folder()->colBookmark(nullptr);
        changed(beside(m_row, node));
    }

private:
    int m_row;
    std::vector<std::shared_ptr<Bookmark>> m_bookmarks;
    bool m_madeCollection = false;
};

class RemovedBookmark : public ArchiveChange {
public:
    RemovedBookmark(ChangedArchive& archive, const std::shared_ptr<Thema>& folder, int row)
        : ArchiveChange(archive, folder, {}), m_row(row),
          m_bookmark(folder->colBookmark()->Item(row + 1))
    {
        setText(textOf(u"Bookmark"_s, m_bookmark->Titel(), u"löschen"_s));
    }

    void redo() override
    {
        const QModelIndex node = tree().nodeOf(*folder());
        tree().removeBookmarks(node, m_row, 1);
        changed(beside(m_row, node));
    }

    void undo() override
    {
        changed(tree().insertBookmarks(tree().nodeOf(*folder()), m_row, {m_bookmark}));
    }

private:
    int m_row;
    std::shared_ptr<Bookmark> m_bookmark;
};

class ChangedBookmark : public ArchiveChange {
public:
    ChangedBookmark(ChangedArchive& archive, const std::shared_ptr<Thema>& folder, int row,
                    const BookmarkTexts& texts)
        : ArchiveChange(archive, folder, {}), m_row(row),
          m_bookmark(folder->colBookmark()->Item(row + 1)), m_other(texts)
    {
        setText(textOf(u"Bookmark"_s, m_bookmark->Titel(), u"ändern"_s));
    }

    void redo() override
    {
        const BookmarkTexts before{m_bookmark->Titel(), m_bookmark->Url(), m_bookmark->Info()};
        m_bookmark->Titel(m_other.titel);
        m_bookmark->Url(m_other.url);
        m_bookmark->Info(m_other.info);
        m_other = before;
        const QModelIndex node = tree().index(m_row, 0, tree().nodeOf(*folder()));
        tree().refresh(node);
        changed(node);
    }
    void undo() override { redo(); }

private:
    int m_row;
    std::shared_ptr<Bookmark> m_bookmark;
    BookmarkTexts m_other;
};
} // namespace

Change addedFolder(ChangedArchive& archive, const FolderPlace& place,
                   const std::shared_ptr<Thema>& folder)
{
    return std::make_unique<AddedFolder>(archive, place, folder);
}

Change removedFolder(ChangedArchive& archive, const FolderPlace& place,
                     const std::shared_ptr<Thema>& folder)
{
    return std::make_unique<RemovedFolder>(archive, place, folder);
}

Change renamedFolder(ChangedArchive& archive, const std::shared_ptr<Thema>& folder,
                     const QString& name)
{
    return std::make_unique<RenamedFolder>(archive, folder, name);
}

Change addedBookmarks(ChangedArchive& archive, const std::shared_ptr<Thema>& folder, int row,
                      const std::vector<std::shared_ptr<Bookmark>>& bookmarks)
{
    return std::make_unique<AddedBookmarks>(archive, folder, row, bookmarks);
}

Change removedBookmark(ChangedArchive& archive, const std::shared_ptr<Thema>& folder, int row)
{
    return std::make_unique<RemovedBookmark>(archive, folder, row);
}

Change changedBookmark(ChangedArchive& archive, const std::shared_ptr<Thema>& folder, int row,
                       const BookmarkTexts& texts)
{
    return std::make_unique<ChangedBookmark>(archive, folder, row, texts);
}
