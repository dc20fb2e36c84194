#pragma once

#include <QString>

#include <functional>
#include <vector>

class Book;

/// Fills `book`, whose files are to be in `path`, with folders of bookmarks.
void makeArchive(Book& book, const QString& path, qint16 folders, qint16 bookmarksPerFolder,
                 const std::function<QString(int)>& folderName);

/// The three texts of a bookmark.
struct BareRecord {
    QString title;
    QString address;
    QString info;
};

struct BareFolder {
    QString name;
    std::vector<BareRecord> records;
};

/// Reads the files of the archive in `path` without any of its rules, a folder
/// at a time; `take` gets each of them.
void readBare(const QString& path, const std::function<void(BareFolder)>& take);

/// Throws BenchError.
QByteArray contentOf(const QString& path);
