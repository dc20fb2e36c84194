#pragma once

#include "bookmarks/Bookmark.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <vector>

/// The records of the archive's files. All files are plain rows of records,
/// without header and trailer; a record cut short at the end is ignored.

constexpr qsizetype bookmarkRecordSize = 722;
constexpr qsizetype themaRecordSize = 336;

/// How many bytes the files have for the texts of a bookmark.
constexpr qsizetype titelWidth = 200;
constexpr qsizetype urlWidth = 200;
constexpr qsizetype infoWidth = 320;
/// The same for a folder's name.
constexpr qsizetype dirNameWidth = 200;

/// The most bytes of a file that a reader needs to see: numbers of 16 bits
/// count the records, so a longer file is refused by its first excess record.
constexpr qint64 bookmarkFileLimit = 32768 * bookmarkRecordSize;
constexpr qint64 indexFileLimit = 32768 * themaRecordSize;

/// One record of the archive's index.
struct ThemaRec {
    qint32 sequenz = 0;
    /// The place in the index, from 1; the folder's number after loading.
    qint32 number = 0;
    QString dirName;
    QString fileName;
};

/// The key of a folder in the archive.
QString themaKey(qint32 themaNr);
/// The key of a bookmark in its folder.
QString bookmarkKey(qint32 themaNr, qint16 bookmarkNr);

/// Reads a folder file. The numbers are taken as they are in the records.
/// Throws DuplicateKeyError, and OverflowError past 32767 records.
std::shared_ptr<BookmarkCollection> readBookmarks(QByteArrayView bytes, qint32 themaNr);
/// A folder file; the records are numbered from 1. Throws OverflowError past 32767.
QByteArray writeBookmarks(const BookmarkCollection& bookmarks);

/// Reads the index. Throws OverflowError past 32767 records.
std::vector<ThemaRec> readThemaRecords(QByteArrayView bytes);
QByteArray writeThemaRecords(const std::vector<ThemaRec>& records);
