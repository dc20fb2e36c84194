// The archive window on 1,000 folders of 100 bookmarks each, opened and shown,
// against a bare loop that reads the same files, makes three texts a record and
// fills a bare tree widget that is shown; and the time that a new folder and a
// new bookmark take there, and among 5,000 folders that all have the first names;
// and the time that opening every folder takes; and what a key of a search costs.
#include "base/FindLine.h"
#include "bench/BenchArchive.h"
#include "bench/Report.h"
#include "bookmarks/ArchiveView.h"
#include "bookmarks/frmBook.h"
#include "tests/gui/FakeShell.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QTreeWidget>

#include <algorithm>
#include <ctime>

using namespace Qt::StringLiterals;

namespace {

constexpr int runs = 11;
constexpr double mostMilliseconds = 50;

/// As the window names new folders.
QString folderName(int number)
{
    return number == 1 ? u"Neuer Ordner"_s : u"Neuer Ordner (%1)"_s.arg(number - 1);
}

void writeArchive(const QString& path, qint16 folders, qint16 bookmarksPerFolder)
{
    Book book(path);
    makeArchive(book, path, folders, bookmarksPerFolder, folderName);
    book.SaveAllThema();
    if (!book.filesNotWritten().empty())
        throw BenchError("the archive cannot be written");
}

double open(FakeShell& shell, std::unique_ptr<frmBook>& window)
{
    window.reset();
    return measured([&] {
        window = std::make_unique<frmBook>(shell, shell.history, nullptr);
        window->show();
        QApplication::processEvents();
    });
}

double openBare(const QString& path)
{
    std::vector<BareFolder> folders;
    QTreeWidget tree;
    return measured([&] {
        auto* root = new QTreeWidgetItem(&tree, {u"Archiv"_s});
        root->setExpanded(true);
        readBare(path, [&](BareFolder folder) {
            auto* const item = new QTreeWidgetItem(root, {folder.name});
            for (const BareRecord& record : folder.records)
                new QTreeWidgetItem(item, {record.title});
            folders.push_back(std::move(folder));
        });
        tree.resize(360, 360);
        tree.show();
        QApplication::processEvents();
    });
}

/// Medians of a few new folders and bookmarks.
void add(Report& report, frmBook& window, const QString& where)
{
    std::vector<double> folders;
    std::vector<double> bookmarks;
    for (int i = 0; i < runs; ++i) {
        window.view().selectNode(window.view().model()->index(0, 0));
        folders.push_back(measured([&window] {
            window.findChild<QAction*>(u"mn_AddOrdner"_s)->trigger();
            QApplication::processEvents();
        }));
        window.view().commitLabel();
        bookmarks.push_back(measured([&window] {
            window.AddBkmToArchive(u"Titel"_s, u"http://neu"_s, {});
            QApplication::processEvents();
        }));
    }
    report.value(u"new folder in "_s + where, median(folders), u"ms"_s, mostMilliseconds);
    report.value(u"new bookmark in "_s + where, median(bookmarks), u"ms"_s, mostMilliseconds);
}

/// The processor time until every folder is open and shown, as by the key "*" on the root.
void openEverything(Report& report, FakeShell& shell, std::unique_ptr<frmBook>& window)
{
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        open(shell, window);
        ArchiveView& view = window->view();
        view.selectNode(view.tree().root());
        QKeyEvent star(QEvent::KeyPress, Qt::Key_Asterisk, Qt::ShiftModifier, u"*"_s);
        const std::clock_t begin = std::clock();
        QApplication::sendEvent(&view, &star);
        QApplication::processEvents();
        times.push_back(1000.0 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC);
        if (view.verticalScrollBar()->maximum() < 100'000) // the rows above the last ones
            throw BenchError("not every folder is open");
    }
    report.value(u"every folder of 1,000 x 100 opened, CPU"_s, median(times), u"ms"_s, 1000);
}

/// The slowest of the keys that type a text that many bookmarks have, and of one that none has.
void find(Report& report, frmBook& window)
{
    auto* const line = window.findChild<FindLine*>();
    line->open();
    auto* const text = line->findChild<QLineEdit*>();
    std::vector<double> slowest;
    for (int i = 0; i < runs; ++i) {
        double most = 0;
        for (const QString& typed : {u"https://www.example.org/ordner/77/"_s, u"größe"_s, u"zzz"_s})
            for (qsizetype length = 1; length <= typed.size(); ++length) {
                const std::clock_t begin = std::clock();
                text->setText(typed.first(length));
                QApplication::processEvents();
                most = std::max(most, 1000.0 * static_cast<double>(std::clock() - begin) /
                                          CLOCKS_PER_SEC);
            }
        slowest.push_back(most);
    }
    line->close();
    report.value(u"slowest key of a search in 1,000 x 100, CPU"_s, median(slowest), u"ms"_s, 50);
}

void measure(Report& report)
{
    std::unique_ptr<frmBook> window;
    FakeShell shell;
    writeArchive(shell.programFolder(), 1000, 100);
    const Medians medians = interleaved(
        runs, [&] { return open(shell, window); }, [&] { return openBare(shell.programFolder()); });
    report.ratio(u"archive window of 1,000 x 100 opened"_s, u"files read into a bare tree widget"_s,
                 medians.ours, medians.bare, u"ms"_s, 1);
    find(report, *window);
    add(report, *window, u"1,000 folders"_s);
    openEverything(report, shell, window);
    window.reset();

    FakeShell names;
    writeArchive(names.programFolder(), 5000, 1);
    open(names, window);
    add(report, *window, u"5,000 folders of first names"_s);
    window.reset();
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return Report::run(measure);
}
