#pragma once

#include "bookmarks/Bookmark.h"

#include <QString>
#include <QStringView>

#include <memory>

class FileReplacer;

/// One folder of the archive with its bookmarks and its file in the program folder.
class Thema {
public:
    /// `programFolder` holds the folder's file; no trailing separator.
    explicit Thema(const QString& programFolder) : m_programFolder(programFolder) {}

    /// The number that the archive handed out when the folder was made.
    void Sequenz(qint32 value) { m_sequenz = value; }
    qint32 Sequenz() const { return m_sequenz; }
    /// The next bookmark number. Throws OverflowError past 32767.
    qint16 GetNewKey();
    /// Kept for whoever sets it; never written to a file.
    void Order(qint16 value) { m_order = value; }
    qint16 Order() const { return m_order; }
    /// The highest bookmark number handed out. It can be set only: reading gives 0.
    void ItCounter(qint16 value) { m_itCounter = value; }
    qint16 ItCounter() const { return 0; }
    void FileNameNew(const QString& value) { m_fileNameNew = value; }
    const QString& FileNameNew() const { return m_fileNameNew; }
    /// The name or the bookmarks changed since the last save.
    void IsEdit(bool value) { m_isEdit = value; }
    bool IsEdit() const { return m_isEdit; }
    /// Writes the folder's file, or only deletes it when nothing changed or there
    /// are no bookmarks to write. Throws no Error: see `saveError`.
    void SaveBookmarks();
    /// The same among other files; the folder outlives `files`.
    void SaveBookmarks(FileReplacer& files);
    /// Reads the folder's file, or creates it empty; without a record in it
    /// `colBookmark` stays as it was. Throws FileError, DuplicateKeyError and
    /// OverflowError, and then changes nothing: see `loadError`.
    void LoadBookmarks();
    /// The bookmarks in display order; null until some are loaded or assigned.
    void colBookmark(const std::shared_ptr<BookmarkCollection>& value) { m_colBookmark = value; }
    const std::shared_ptr<BookmarkCollection>& colBookmark() const { return m_colBookmark; }
    /// Whether one of the bookmarks has exactly this address.
    bool holds(const QString& url) const;
    /// Bare name of the folder's file.
    void FileName(const QString& value) { m_fileName = value; }
    const QString& FileName() const { return m_fileName; }
    /// The name on display. Setting it marks the folder changed.
    void DirName(const QString& value);
    const QString& DirName() const { return m_dirName; }
    /// The number in all keys; 16 bits. Setting throws OverflowError.
    void Nr(qint32 value);
    qint32 Nr() const { return m_nr; }

    /// Why the last `SaveBookmarks` could not write, for the user; else empty.
    const QString& saveError() const { return m_saveError; }
    /// Why the last `LoadBookmarks` failed, for the user; else empty.
    const QString& loadError() const { return m_loadError; }
    /// The file could not be read: a change would overwrite what is in it. Saving
    /// leaves the file alone until a load succeeds.
    bool refusesChanges() const { return !m_loadError.isEmpty(); }

    /// The file can be read but not written.
    void isWriteProtected(bool value) { m_isWriteProtected = value; }
    bool isWriteProtected() const { return m_isWriteProtected; }

    /// Whether a folder's file may have this name: it must stay in the program
    /// folder and must not be the archive's index.
    static bool isFileName(QStringView name);

private:
    void checkFileName() const;
    QString filePath() const;

    QString m_programFolder;
    qint32 m_sequenz = 0;
    qint16 m_order = 0;
    qint16 m_itCounter = 0;
    qint16 m_nr = 0;
    bool m_isEdit = false;
    bool m_isWriteProtected = false;
    QString m_fileNameNew;
    QString m_fileName;
    QString m_dirName;
    QString m_saveError;
    QString m_loadError;
    std::shared_ptr<BookmarkCollection> m_colBookmark;
};

/// The folders of an archive in display order.
using ThemaCollection = KeyedCollection<std::shared_ptr<Thema>>;
