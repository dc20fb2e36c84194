// The archive window on 1,000 folders of 100 bookmarks each, opened and shown,
// against a bare loop that reads the same files, makes three texts a record and
// fills a bare tree widget that is shown; and the time that a new folder and a
// new bookmark take there, and among 5,000 folders that all have the first names.
#include "bookmarks/ArchiveRecords.h"
#include "bookmarks/ArchiveView.h"
#include "bookmarks/frmBook.h"
#include "tests/gui/FakeShell.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTreeWidget>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {
constexpr int runs = 11;
constexpr double mostRatio = 1.5;
constexpr double mostMilliseconds = 50;

QString folderName(int number)
{
    return number == 1 ? u"Neuer Ordner"_s : u"Neuer Ordner (%1)"_s.arg(number - 1);
}

std::shared_ptr<BookmarkCollection> makeBookmarks(qint16 folder, qint16 count)
{
    auto bookmarks = std::make_shared<BookmarkCollection>();
    for (qint16 n = 1; n <= count; ++n) {
        auto bookmark = std::make_shared<Bookmark>();
        bookmark->Titel(u"Über die Größe des Lesezeichens %1 im Ordner %2"_s.arg(n).arg(folder));
        bookmark->Url(u"https://www.example.org/ordner/%1/seite/%2.html"_s.arg(folder).arg(n));
        bookmark->Info(u"Eine Beschreibung,\r\ndie zwei Zeilen hat (%1)"_s.arg(n));
        bookmarks->Add(bookmark);
    }
    return bookmarks;
}

void writeArchive(const QString& path, qint16 folderCount, qint16 bookmarksPerFolder)
{
    Book book(path);
    auto folders = std::make_shared<ThemaCollection>();
    for (qint16 n = 1; n <= folderCount; ++n) {
        auto folder = std::make_shared<Thema>(path);
        folder->Nr(n);
        folder->Sequenz(n);
        folder->FileName(QString::number(n) + u".bkm"_s);
        folder->DirName(folderName(n));
        folder->colBookmark(makeBookmarks(n, bookmarksPerFolder));
        folders->Add(folder, themaKey(n));
    }
    book.colThema(folders);
    book.SaveAllThema();
    if (!book.filesNotWritten().empty())
        qFatal("the archive cannot be written");
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s", qPrintable(file.errorString()));
    return file.readAll();
}

template <typename Action>
double milliseconds(Action action)
{
    QElapsedTimer timer;
    timer.start();
    action();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double open(FakeShell& shell, std::unique_ptr<frmBook>& window)
{
    return milliseconds([&] {
        window = std::make_unique<frmBook>(shell, nullptr);
        window->show();
        QApplication::processEvents();
    });
}

void fillFolder(QTreeWidgetItem& folder, const QByteArray& file, std::vector<QString>& texts)
{
    for (const char* record = file.constBegin(); file.constEnd() - record >= bookmarkRecordSize;
         record += bookmarkRecordSize) {
        const QString title = QString::fromLatin1(record + 2, 200).trimmed();
        texts.push_back(QString::fromLatin1(record + 202, 200).trimmed());
        texts.push_back(QString::fromLatin1(record + 402, 320).trimmed());
        new QTreeWidgetItem(&folder, {title});
    }
}

double openBare(const QString& path, std::unique_ptr<QTreeWidget>& tree)
{
    std::vector<QString> texts;
    return milliseconds([&] {
        tree = std::make_unique<QTreeWidget>();
        auto* root = new QTreeWidgetItem(tree.get(), {u"Archiv"_s});
        root->setExpanded(true);
        const QByteArray index = contentOf(path + u"/Book.bkm"_s);
        for (qsizetype at = 0; at + themaRecordSize <= index.size(); at += themaRecordSize) {
            const QString name = QString::fromLatin1(index.sliced(at + 8, 200)).trimmed();
            const QString file = QString::fromLatin1(index.sliced(at + 208, 128)).trimmed();
            fillFolder(*new QTreeWidgetItem(root, {name}), contentOf(path + u'/' + file), texts);
        }
        tree->resize(360, 360);
        tree->show();
        QApplication::processEvents();
    });
}

/// Medians of a few new folders and bookmarks.
bool addsAtOnce(frmBook& window, const char* where)
{
    std::vector<double> folders;
    std::vector<double> bookmarks;
    for (int i = 0; i < runs; ++i) {
        window.view().selectNode(window.view().model()->index(0, 0));
        folders.push_back(milliseconds([&window] {
            window.findChild<QAction*>(u"mn_AddOrdner"_s)->trigger();
            QApplication::processEvents();
        }));
        window.view().commitLabel();
        bookmarks.push_back(milliseconds([&window] {
            window.AddBkmToArchive(u"Titel"_s, u"http://neu"_s, {});
            QApplication::processEvents();
        }));
    }
    std::printf("%s: new folder %.1f ms, new bookmark %.1f ms (at most %.0f)\n", where,
                median(folders), median(bookmarks), mostMilliseconds);
    return std::max(median(folders), median(bookmarks)) <= mostMilliseconds;
}
} // namespace

int main(int argc, char** argv) // NOLINT(bugprone-exception-escape)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    FakeShell shell;
    writeArchive(shell.programFolder(), 1000, 100);
    std::vector<double> ours;
    std::vector<double> bare;
    std::unique_ptr<frmBook> window;
    for (int i = 0; i < runs; ++i) {
        std::unique_ptr<QTreeWidget> tree;
        // Take turns in going first, so that neither side profits from the order.
        if (i % 2 == 0)
            ours.push_back(open(shell, window));
        bare.push_back(openBare(shell.programFolder(), tree));
        if (i % 2 != 0)
            ours.push_back(open(shell, window));
    }
    const double ratio = median(ours) / median(bare);
    std::printf("opened: %.1f ms, bare loop: %.1f ms, ratio %.2f (at most %.1f)\n", median(ours),
                median(bare), ratio, mostRatio);
    bool all = ratio <= mostRatio;
    all = addsAtOnce(*window, "in 1,000 folders of 100 bookmarks") && all;
    window.reset();

    FakeShell names;
    writeArchive(names.programFolder(), 5000, 1);
    open(names, window);
    all = addsAtOnce(*window, "among 5,000 first names") && all;
    return all ? 0 : 1;
}
