#pragma once

#include "bookmarks/Thema.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

/// A file of the archive that could not be read or written.
struct ArchiveFault {
    /// The folder's name on display; empty for the index.
    QString dirName;
    /// Bare name of the file.
    QString fileName;
    /// A text for the user.
    QString reason;
};

/// The bookmark archive: the folders and the index file that lists them, in the
/// program folder.
class Book {
public:
    /// `programFolder` holds the files; no trailing separator.
    explicit Book(const QString& programFolder) : m_programFolder(programFolder) {}

    /// The highest folder number known. It never falls by itself.
    void SequenzMax(qint32 value) { m_sequenzMax = value; }
    qint32 SequenzMax() const { return m_sequenzMax; }
    /// Removes the folder at `index` (from 1) with its bookmarks and saves. The
    /// folder's file is deleted in the process's current folder, except a file
    /// that could not be read. Throws NotFoundError before anything is changed.
    void DeleteThema(qint16 index);
    /// Something changed since the last save.
    void IsEdit(bool value) { m_isEdit = value; }
    bool IsEdit() const { return m_isEdit; }
    /// The number of folders that the last load found.
    void ItCounter(qint16 value) { m_itCounter = value; }
    qint16 ItCounter() const { return m_itCounter; }
    /// The next folder number. Throws OverflowError past 2147483647.
    qint32 GetNewKey();
    /// The folders in display order; null until some are loaded or assigned.
    void colThema(const std::shared_ptr<ThemaCollection>& value) { m_colThema = value; }
    const std::shared_ptr<ThemaCollection>& colThema() const { return m_colThema; }
    /// Writes every changed folder, then the index. Throws no Error: see
    /// `filesNotWritten`. Writes nothing after a failed `LoadAllThema`: the index
    /// that could not be read is not overwritten.
    void SaveAllThema();
    /// Reads the index, or creates it empty; the folders' own files are not read.
    /// False when it lists no folder; `colThema` then stays as it was. Throws
    /// FileError, OverflowError and DuplicateKeyError.
    bool LoadAllThema();

    /// `prepare` is called before each save touches the files.
    void beforeSaving(const std::function<void()>& prepare) { m_beforeSaving = prepare; }
    /// Reads the files of all folders and goes on where one fails: see `filesNotRead`.
    void loadFolders();
    /// The folders whose last load failed, in order. They refuse changes.
    std::vector<ArchiveFault> filesNotRead() const;
    /// The files that the last save could not write, the index first.
    std::vector<ArchiveFault> filesNotWritten() const;
    /// Marks the archive and the folders changed whose files could not be written.
    void markUnwrittenChanged();

private:
    void prepareSaving() const;
    void saveFolders();
    void readIndex(ThemaCollection& folders);
    void writeIndex() const;
    QString indexPath() const;

    QString m_programFolder;
    qint32 m_sequenzMax = 0;
    qint16 m_itCounter = 0;
    bool m_isEdit = false;
    std::function<void()> m_beforeSaving;
    QString m_saveError;
    QString m_loadError;
    std::shared_ptr<ThemaCollection> m_colThema;
};
