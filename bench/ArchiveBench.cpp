// How the archive's files compare with bare loops over the same data: loaded,
// saved with every folder changed, exported. The files lie beside the program: a
// folder for temporary files may be in memory only.
#include "base/SafeFile.h"
#include "bench/BenchArchive.h"
#include "bench/Report.h"
#include "bookmarks/Book.h"
#include "bookmarks/DatedCopies.h"
#include "bookmarks/ExportFormats.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int runs = 9;
constexpr int folderCount = 1000;
constexpr int bookmarksPerFolder = 100;

void load(const QString& path)
{
    Book book(path);
    book.LoadAllThema();
    book.loadFolders();
    if (book.ItCounter() != folderCount || !book.filesNotRead().empty())
        throw BenchError("the archive was not loaded");
}

void loadBare(const QString& path)
{
    std::vector<BareFolder> folders;
    readBare(path, [&](BareFolder folder) { folders.push_back(std::move(folder)); });
    if (folders.size() != folderCount || folders.back().records.size() != bookmarksPerFolder)
        throw BenchError("the archive was not read");
}

void save(Book& book)
{
    for (const auto& folder : *book.colThema())
        folder->IsEdit(true);
    book.SaveAllThema();
    if (!book.filesNotWritten().empty())
        throw BenchError("the archive was not saved");
}

void writeSynced(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        file.write(bytes) != bytes.size() || ::fsync(file.handle()) != 0)
        throw BenchError(file.errorString().toStdString());
}

struct NamedBytes {
    QString name;
    QByteArray bytes;
};

std::vector<NamedBytes> filesOf(const QString& path)
{
    std::vector<NamedBytes> files;
    for (const QString& name : QDir(path).entryList({u"*.bkm"_s}, QDir::Files))
        files.push_back({name, contentOf(path + u'/' + name)});
    if (files.size() != folderCount + 1)
        throw BenchError("the archive has too few files");
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

void compare(Report& report, const QString& what, const QString& against, double most,
             const std::function<void()>& ours, const std::function<void()>& bare)
{
    const Medians medians = interleaved(
        runs, [&] { return measured(ours); }, [&] { return measured(bare); });
    report.ratio(what, against, medians.ours, medians.bare, u"ms"_s, most);
}

void measure(Report& report)
{
    const QTemporaryDir folder(QCoreApplication::applicationDirPath() + u"/archive-XXXXXX"_s);
    const QString path = folder.path();
    const QString barePath = folder.filePath(u"bare"_s);
    QDir().mkpath(barePath);
    Book book(path);
    makeArchive(book, path, folderCount, bookmarksPerFolder,
                [](int number) { return u"Ordner %1"_s.arg(number); });
    save(book);
    compare(
        report, u"archive of 1,000 x 100 loaded"_s, u"files read, three texts a record"_s, 1,
        [&] { load(path); }, [&] { loadBare(path); });

    const std::vector<NamedBytes> files = filesOf(path);
    const auto writeBare = [&] {
        for (const NamedBytes& file : files)
            writeSynced(barePath + u'/' + file.name, file.bytes);
    };
    compare(
        report, u"archive saved, every folder changed"_s, u"1,001 files written and synced"_s, 1.2,
        [&] { save(book); }, writeBare);
    QDate day(2026, 1, 1);
    compare(
        report, u"dated copy, made once a day"_s, u"1,001 files written and synced"_s, 1.5,
        [&] {
            day = day.addDays(1);
            if (!makeDatedCopy(path, folder.filePath(u"copies"_s), day).isEmpty())
                throw BenchError("the copy was not made");
        },
        writeBare);

    const ExportTime time{QDateTime(QDate(2026, 11, 5), QTime(14, 3, 9)), QLocale::c()};
    const std::vector<QByteArray> lines = linesOf(exportArchiveNetscape(book, time));
    const QString exported = folder.filePath(u"export.htm"_s);
    compare(
        report, u"archive exported (Netscape)"_s, u"same lines appended and written"_s, 1.5,
        [&] { writeFile(exported, exportArchiveNetscape(book, time)); },
        [&] {
            QByteArray all;
            for (const QByteArray& line : lines)
                all.append(line);
            writeFile(exported, all);
        });
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return Report::run(measure);
}
