#include "bookmarks/DefaultArchive.h"

#include "base/Maker.h"
#include "base/SafeFile.h"
#include "bookmarks/ArchiveRecords.h"
#include "bookmarks/Book.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
void keepOldFile(const QString& path)
{
    takeBackupBack(path);
    const QFileInfo old(path);
    if (!old.isFile() || old.size() == 0)
        return;
    const QString kept = path + u".alt"_s;
    QString free = kept;
    for (int n = 2; QFileInfo::exists(free); ++n)
        free = kept + QString::number(n);
    QFile file(path);
    if (!file.rename(free))
        throw FileError(path, file.errorString());
}

/// Folder files without an index: new folders would take their names.
void keepOldFiles(const QString& programFolder)
{
    static const QRegularExpression folderFile(u"^[0-9]+\\.bkm(?=(\\.bak)?$)"_s);
    const QStringList names = QDir(programFolder).entryList(QDir::Files);
    for (const QString& name : names) {
        if (const auto match = folderFile.match(name); match.hasMatch())
            keepOldFile(programFolder + u'/' + match.captured());
    }
}

void add(BookmarkCollection& bookmarks, qint16 number, const QString& titel, const QString& url)
{
    auto bookmark = std::make_shared<Bookmark>();
    bookmark->Nr(number);
    bookmark->Titel(titel);
    bookmark->Url(url);
    bookmarks.Add(std::move(bookmark)); // without a key: two share their number
}
} // namespace

void createDefaultArchive(Book& book, const QString& programFolder)
{
    auto folder = std::make_shared<Thema>(programFolder);
    folder->Nr(1);
    folder->FileName(u"1.bkm"_s);
    folder->DirName(u"Info + Lizenzvertrag"_s);
    folder->Sequenz(1);
    keepOldFiles(programFolder);

    auto bookmarks = std::make_shared<BookmarkCollection>();
    add(*bookmarks, 1, u"Tessera Software-Lizenzvertrag"_s, programFolder + u"\\lizenz.txt"_s);
    add(*bookmarks, 1, u"Downloadseite zur Tessera Software und Dokumentation"_s,
        maker::downloadPage());
    add(*bookmarks, 2, u"Die Website von Loomwork"_s, maker::webSite());
    folder->colBookmark(bookmarks);
    folder->SaveBookmarks();

    auto folders = std::make_shared<ThemaCollection>();
    folders->Add(folder, themaKey(folder->Nr()));
    book.colThema(folders);
    book.SaveAllThema();
}
