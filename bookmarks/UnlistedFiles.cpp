#include "bookmarks/UnlistedFiles.h"

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
QString freeName(const QString& path)
{
    const QString kept = path + u".alt"_s;
    QString free = kept;
    for (int n = 2; QFileInfo::exists(free); ++n)
        free = kept + QString::number(n);
    return free;
}

bool hasContent(const QString& path)
{
    const QFileInfo file(path);
    return file.isFile() && file.size() > 0;
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(indexFileLimit) : QByteArray();
}

void keepFolderFile(const QString& path, QStringList& kept)
{
    takeBackupBack(path);
    if (!hasContent(path))
        return;
    QFile file(path);
    if (!file.rename(freeName(path)))
        throw FileError(path, file.errorString());
    kept << QFileInfo(file).fileName();
}

/// What remains of an index that ends within a record: only its whole records count.
void keepCutIndex(const QString& path, QStringList& kept)
{
    if (!hasContent(path) || QFileInfo(path).size() % themaRecordSize == 0)
        return;
    QFile file(path);
    const QString copy = freeName(path);
    // It stays as it is until the next save, and is loaded again.
    for (const QString& before : QDir(QFileInfo(path).path()).entryList({u"Book.bkm.alt*"_s}))
        if (contentOf(QFileInfo(path).path() + u'/' + before) == contentOf(path))
            return;
    if (!file.copy(copy))
        throw FileError(path, file.errorString());
    kept << QFileInfo(copy).fileName();
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

QStringList keepUnlistedFiles(const QString& programFolder, const QSet<QString>& listed)
{
    static const QRegularExpression folderFile(u"^[0-9]+\\.bkm(?=(\\.bak)?$)"_s);
    QStringList kept;
    keepCutIndex(programFolder + u"/Book.bkm"_s, kept);
    if (!listed.isEmpty() && kept.isEmpty())
        return {};
    const QStringList names = QDir(programFolder).entryList(QDir::Files);
    for (const QString& name : names) {
        const auto match = folderFile.match(name);
        if (match.hasMatch() && !listed.contains(match.captured()))
            keepFolderFile(programFolder + u'/' + match.captured(), kept);
    }
    return kept;
}

void createDefaultArchive(Book& book, const QString& programFolder)
{
    auto folder = std::make_shared<Thema>(programFolder);
    folder->Nr(1);
    folder->FileName(u"1.bkm"_s);
    folder->DirName(u"Info + Lizenzvertrag"_s);
    folder->Sequenz(1);

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
