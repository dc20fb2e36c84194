#pragma once

#include "bookmarks/ArchiveEditor.h"
#include "bookmarks/ArchiveTree.h"
#include "bookmarks/BookmarkPlace.h"

#include <functional>
#include <vector>

/// An archive with all that changes it. What is referred to outlives whoever holds this.
struct ArchiveParts {
    ArchiveFiles& files;
    ArchiveTree& tree;
    ArchiveEditor& editor;
};

/// The place for a bookmark that comes from outside of the archive's window: a folder chosen
/// among all that can be changed, or a new one.
class ChosenFolder : public BookmarkPlace {
public:
    struct Folder {
        /// Stands for the folder: its name may change.
        QString fileName;
        QString name;
    };

    using Added = std::function<void(const QModelIndex& node)>;

    /// `added` is called with a bookmark's node when it is in the archive; what it throws is
    /// thrown on.
    ChosenFolder(const ArchiveParts& archive, const Added& added)
        : m_archive(archive), m_added(added)
    {
    }

    /// The folders to choose from, in the archive's order, but the one with `first` as its
    /// file first.
    std::vector<Folder> folders(const QString& first) const;
    void choose(const QString& fileName);
    void chooseNew(const QString& typedName);
    /// A name for a new folder that nothing in the archive has.
    QString nameForNew() const { return m_archive.editor.GetNewDirName(); }
    /// What the user is told about the name of the new folder; empty if it is good.
    QString nameProblem() const;
    /// The names of the folders that have a bookmark with exactly this address.
    QStringList foldersWith(const QString& url) const;

    /// The file of the chosen folder, and the folder's name. Empty until one is chosen; of a
    /// new one the file is known when the bookmark is in it.
    const QString& fileName() const { return m_fileName; }
    QString name() const;

    std::shared_ptr<Thema> selectedFolder() const override;
    std::shared_ptr<Bookmark> selectedBookmark() const override { return nullptr; }
    void AddBkmToArchive(const QString& title, const QString& url, const QString& info) override;
    void UpdateBookmark(const std::shared_ptr<Bookmark>& bookmark, const QString& title,
                        const QString& url, const QString& info) override;

private:
    QModelIndex folderNode() const;

    ArchiveParts m_archive;
    Added m_added;
    QString m_fileName;
    QString m_newName;
    bool m_isNew = false;
};

/// Says where a bookmark was added.
QString addedText(const QString& folder);
/// Says in which of the folders an address is already; empty if there are none.
QString knownInText(const QStringList& folders);
