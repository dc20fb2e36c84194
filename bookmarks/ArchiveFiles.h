#pragma once

#include "bookmarks/Book.h"

#include <QSet>
#include <QString>

#include <memory>
#include <vector>

/// The archive of one window between its files and its tree: loads it, saves it
/// and keeps the user from changing what could not be read.
class ArchiveFiles {
public:
    /// `programFolder` holds the files, `dataFolder` the dated copies of them: none are made
    /// where it is empty. No trailing separators.
    explicit ArchiveFiles(const QString& programFolder, const QString& dataFolder = {})
        : m_programFolder(programFolder), m_dataFolder(dataFolder)
    {
    }

    /// The archive, made at its first use.
    Book& book();
    /// Drops the archive with everything in it that is not saved.
    void release() { m_book.reset(); }
    const QString& programFolder() const { return m_programFolder; }

    /// Reads the index and the folders; an archive without folders becomes the default
    /// one. Changes that were not saved are lost, but the archive stays marked changed.
    /// Returns a text for the user when a file could not be read, or when the index was
    /// no longer whole and what it did not list had to be kept; else an empty text.
    QString load();
    /// The folders for the tree: null when the load found none or failed.
    const std::shared_ptr<ThemaCollection>& shownFolders() const { return m_shown; }
    /// Writes the archive when it is marked changed. Returns what could not be
    /// written, as a text for the user, and keeps it marked; else an empty one.
    QString save();
    /// The same for a save that the archive itself has just made.
    QString unwritten();
    /// The last load went through.
    bool isLoaded() const { return !m_loadFailed; }
    /// Why there is no copy of the archive as it was before today's first save, as a text for
    /// the user; empty where there is one, and from the second call on.
    QString takeCopyProblem();
    /// The archive or a folder changed since the last save.
    bool isChanged();

    /// The archive can only be looked at, as its index or its folder is not to be written.
    bool isWriteProtected() const { return !m_protected.isEmpty(); }
    /// Throws Error unless the last load went through and the archive may be changed.
    void checkReadable() const;
    /// Throws Error if this folder's file could not be read, or is not to be changed.
    static void checkReadable(const Thema& folder);
    /// Throws Error unless all that is to be exported could be read: one folder, or the
    /// whole archive where it is null. An export would write over an older one.
    void checkExportable(const Thema* folder);

private:
    void checkReadable(const QString& wanted) const;
    QSet<QString> listedFiles(bool hasFolders);
    QString keepUnlisted(bool hasFolders);

    void copyArchive();
    void findProtected();
    /// A save that was killed may have left a ".bak" beside the new file.
    void removeOldBackups();

    QString m_programFolder;
    QString m_dataFolder;
    QString m_copyProblem;
    bool m_copyProblemTold = false;
    QString m_protected; ///< the path that is not to be written
    bool m_loadFailed = false;
    std::unique_ptr<Book> m_book;
    std::shared_ptr<ThemaCollection> m_shown;
};

/// `heading` and below it the first few files with their reasons; empty without any.
QString faultText(const QString& heading, const std::vector<ArchiveFault>& faults);
