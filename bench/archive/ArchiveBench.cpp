// Prints how the archive compares with bare loops over the same data: loading,
// saving with every folder changed, and exporting. Each ratio is that of the
// medians of interleaved runs. Arguments: the number of runs (9), and a folder
// for the files (a temporary one in the current folder).

#include "base/SafeFile.h"
#include "bookmarks/ArchiveRecords.h"
#include "bookmarks/Book.h"
#include "bookmarks/ExportNetscape.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <unistd.h>
#include <vector>

using namespace Qt::StringLiterals;

namespace {
constexpr int folderCount = 1000;
constexpr int bookmarksPerFolder = 100;

struct Comparison {
    const char* name;
    double most;
    std::function<void()> ours;
    std::function<void()> bare;
};

double milliseconds(const std::function<void()>& run)
{
    QElapsedTimer timer;
    timer.start();
    run();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

bool holds(const Comparison& comparison, int runs)
{
    std::vector<double> ours;
    std::vector<double> bare;
    for (int i = 0; i < runs; ++i) {
        // Take turns in going first, so that neither side profits from the order.
        if (i % 2 == 0)
            ours.push_back(milliseconds(comparison.ours));
        bare.push_back(milliseconds(comparison.bare));
        if (i % 2 != 0)
            ours.push_back(milliseconds(comparison.ours));
    }
    const double ratio = median(ours) / median(bare);
    std::printf("%-8s %8.1f ms / %8.1f ms = %.2f (at most %.1f)\n", comparison.name, median(ours),
                median(bare), ratio, comparison.most);
    return ratio <= comparison.most;
}

std::shared_ptr<BookmarkCollection> makeBookmarks(qint16 folder)
{
    auto bookmarks = std::make_shared<BookmarkCollection>();
    for (qint16 n = 1; n <= bookmarksPerFolder; ++n) {
        auto bookmark = std::make_shared<Bookmark>();
        bookmark->Nr(n);
        bookmark->Titel(u"Über die Größe des Lesezeichens %1 im Ordner %2"_s.arg(n).arg(folder));
        bookmark->Url(u"https://www.example.org/ordner/%1/seite/%2.html"_s.arg(folder).arg(n));
        bookmark->Info(u"Eine Beschreibung,\r\ndie zwei Zeilen hat (%1)"_s.arg(n));
        bookmarks->Add(bookmark, bookmarkKey(folder, n));
    }
    return bookmarks;
}

void makeArchive(Book& book, const QString& path)
{
    auto folders = std::make_shared<ThemaCollection>();
    for (qint16 n = 1; n <= folderCount; ++n) {
        auto folder = std::make_shared<Thema>(path);
        folder->Nr(n);
        folder->Sequenz(n);
        folder->FileName(u"%1.bkm"_s.arg(n));
        folder->DirName(u"Ordner %1"_s.arg(n));
        folder->colBookmark(makeBookmarks(n));
        folders->Add(folder, themaKey(n));
    }
    book.colThema(folders);
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s", qPrintable(file.errorString()));
    return file.readAll();
}

void load(const QString& path)
{
    Book book(path);
    book.LoadAllThema();
    book.loadFolders();
    if (book.ItCounter() != folderCount || !book.filesNotRead().empty())
        qFatal("load");
}

/// What the files hold, as three texts a record, and nothing else.
void loadBare(const QString& path)
{
    std::vector<QString> texts;
    const QByteArray index = contentOf(path + u"/Book.bkm"_s);
    for (qsizetype at = 0; at + themaRecordSize <= index.size(); at += themaRecordSize) {
        const QString name = QString::fromLatin1(index.sliced(at + 208, 128)).trimmed();
        const QByteArray file = contentOf(path + u'/' + name);
        for (const char* record = file.constBegin(); file.constEnd() - record >= bookmarkRecordSize;
             record += bookmarkRecordSize) {
            texts.push_back(QString::fromLatin1(record + 2, 200).trimmed());
            texts.push_back(QString::fromLatin1(record + 202, 200).trimmed());
            texts.push_back(QString::fromLatin1(record + 402, 320).trimmed());
        }
    }
    if (texts.size() != std::size_t{3} * folderCount * bookmarksPerFolder)
        qFatal("bare load");
}

void save(Book& book)
{
    for (const auto& folder : *book.colThema())
        folder->IsEdit(true);
    book.SaveAllThema();
    if (!book.filesNotWritten().empty())
        qFatal("save");
}

void writeSynced(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        file.write(bytes) != bytes.size() || fsync(file.handle()) != 0)
        qFatal("%s", qPrintable(file.errorString()));
}

struct NamedBytes {
    QString name;
    QByteArray bytes;
};

std::vector<NamedBytes> contentsOf(const Book& book, const QString& path)
{
    std::vector<NamedBytes> files;
    for (const auto& folder : *book.colThema())
        files.push_back({folder->FileName(), contentOf(path + u'/' + folder->FileName())});
    files.push_back({u"Book.bkm"_s, contentOf(path + u"/Book.bkm"_s)});
    return files;
}

std::vector<QByteArray> linesOf(const QByteArray& bytes)
{
    std::vector<QByteArray> lines;
    for (qsizetype at = 0; at < bytes.size();) {
        const qsizetype end = bytes.indexOf('\n', at) + 1;
        lines.push_back(bytes.sliced(at, end - at));
        at = end;
    }
    return lines;
}

int compare(int argc, char** argv)
{
    const int runs = argc > 1 ? std::max(1, QByteArray(argv[1]).toInt()) : 9;
    const QTemporaryDir temporary(argc > 2 ? QFile::decodeName(argv[2]) + u"/archive-XXXXXX"_s
                                           : u"archive-XXXXXX"_s);
    const QString path = temporary.path();
    const QString barePath = temporary.filePath(u"bare"_s);
    QDir().mkpath(barePath);
    Book book(path);
    makeArchive(book, path);
    save(book);
    const auto files = contentsOf(book, path);
    const ExportTime time{QDateTime(QDate(2026, 11, 5), QTime(14, 3, 9)), QLocale::c()};
    const auto lines = linesOf(exportArchiveNetscape(book, time));
    const QString exported = temporary.filePath(u"export.htm"_s);

    const std::vector<Comparison> comparisons{
        {"load", 1.5, [&] { load(path); }, [&] { loadBare(path); }},
        {"save", 2, [&] { save(book); },
         [&] {
             for (const auto& file : files)
                 writeSynced(barePath + u'/' + file.name, file.bytes);
         }},
        {"export", 3, [&] { writeFile(exported, exportArchiveNetscape(book, time)); },
         [&] {
             QByteArray all;
             for (const QByteArray& line : lines)
                 all.append(line);
             writeFile(exported, all);
         }},
    };
    bool all = true;
    for (const Comparison& comparison : comparisons)
        all = holds(comparison, runs) && all;
    return all ? 0 : 1;
}
} // namespace

int main(int argc, char** argv)
{
    try {
        return compare(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
