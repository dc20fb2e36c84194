#include "bench/BenchArchive.h"

#include "bench/Report.h"
#include "bookmarks/ArchiveRecords.h"
#include "bookmarks/Book.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

std::shared_ptr<BookmarkCollection> makeBookmarks(qint16 folder, qint16 count)
{
    auto bookmarks = std::make_shared<BookmarkCollection>();
    for (qint16 n = 1; n <= count; ++n) {
        auto bookmark = std::make_shared<Bookmark>();
        bookmark->Nr(n);
        bookmark->Titel(u"Über die Größe des Lesezeichens %1 im Ordner %2"_s.arg(n).arg(folder));
        bookmark->Url(u"https://www.example.org/ordner/%1/seite/%2.html"_s.arg(folder).arg(n));
        bookmark->Info(u"Eine Beschreibung,\r\ndie zwei Zeilen hat (%1)"_s.arg(n));
        bookmarks->Add(bookmark, bookmarkKey(folder, n));
    }
    return bookmarks;
}

QString textAt(const char* record, qsizetype from, qsizetype length)
{
    return QString::fromLatin1(record + from, length).trimmed();
}

} // namespace

void makeArchive(Book& book, const QString& path, qint16 folders, qint16 bookmarksPerFolder,
                 const std::function<QString(int)>& folderName)
{
    auto all = std::make_shared<ThemaCollection>();
    for (qint16 n = 1; n <= folders; ++n) {
        auto folder = std::make_shared<Thema>(path);
        folder->Nr(n);
        folder->Sequenz(n);
        folder->FileName(u"%1.bkm"_s.arg(n));
        folder->DirName(folderName(n));
        folder->colBookmark(makeBookmarks(n, bookmarksPerFolder));
        all->Add(folder, themaKey(n));
    }
    book.colThema(all);
}

void readBare(const QString& path, const std::function<void(BareFolder)>& take)
{
    const QByteArray index = contentOf(path + u"/Book.bkm"_s);
    for (qsizetype at = 0; at + themaRecordSize <= index.size(); at += themaRecordSize) {
        const char* const folder = index.constData() + at;
        const QByteArray file = contentOf(path + u'/' + textAt(folder, 208, 128));
        BareFolder bare{textAt(folder, 8, 200), {}};
        for (const char* record = file.constBegin(); file.constEnd() - record >= bookmarkRecordSize;
             record += bookmarkRecordSize)
            bare.records.push_back(
                {textAt(record, 2, 200), textAt(record, 202, 200), textAt(record, 402, 320)});
        take(std::move(bare));
    }
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw BenchError((path + u": "_s + file.errorString()).toStdString());
    return file.readAll();
}
