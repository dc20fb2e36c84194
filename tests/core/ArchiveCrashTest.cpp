#include "SampleArchive.h"
#include "base/Errors.h"

#include <QRandomGenerator>
#include <QThread>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {
constexpr int folderCount = 8;
constexpr int bookmarkCount = 60;

/// Every save is a generation: all bookmarks of a folder carry its number.
void saveForever(const QString& path)
{
    Book book(path);
    for (int sequenz = 1; sequenz <= folderCount; ++sequenz)
        addThema(book, path, sequenz, u"Ordner"_s);
    for (int generation = 0;; ++generation) {
        for (const auto& folder : *book.colThema()) {
            folder->colBookmark(std::make_shared<BookmarkCollection>());
            for (int i = 0; i < bookmarkCount; ++i)
                folder->colBookmark()->Add(makeBookmark(0, QString::number(generation), {}, {}));
            folder->IsEdit(true);
        }
        book.SaveAllThema();
    }
}

/// The folder's generation, or -1 when the folder is not whole.
int generationOf(const Thema& folder)
{
    if (!folder.colBookmark())
        return -1;
    const QString text = folder.colBookmark()->Item(1)->Titel();
    for (const auto& bookmark : *folder.colBookmark())
        if (bookmark->Titel() != text)
            return -1;
    return folder.colBookmark()->Count() == bookmarkCount ? text.toInt() : -1;
}
} // namespace

class ArchiveCrashTest : public TestCase {
    Q_OBJECT
private slots:
    /// As many kills as TESSERA_KILLS says, 20 without it.
    void killedWhileSaving()
    {
        const int wanted = qEnvironmentVariableIntValue("TESSERA_KILLS");
        const int kills = wanted > 0 ? wanted : 20;
        for (int i = 0; i < kills && !QTest::currentTestFailed(); ++i) {
            init();
            killOnce(path());
            checkWhole(path());
        }
    }

private:
    static void killOnce(const QString& path)
    {
        const pid_t child = ::fork();
        if (child == 0) {
            ignoringErrors([&path] { saveForever(path); });
            ::_exit(1);
        }
        const QString index = path + u"/Book.bkm"_s; // comes last
        QVERIFY(QTest::qWaitFor([&index] { return QFile::exists(index); }));
        // The moment of the kill is what is being tried; nothing is awaited.
        QThread::usleep(QRandomGenerator::global()->bounded(20000U));
        ::kill(child, SIGKILL);
        int status = 0;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QVERIFY(WIFSIGNALED(status));
    }

    static void checkWhole(const QString& path)
    {
        Book book(path);
        QVERIFY(book.LoadAllThema());
        book.loadFolders();
        QVERIFY(book.filesNotRead().empty());
        QCOMPARE(book.colThema()->Count(), folderCount);
        const int first = generationOf(*book.colThema()->Item(1));
        int previous = first;
        for (const auto& thema : *book.colThema()) {
            const int generation = generationOf(*thema);
            QVERIFY2(generation >= 0, qPrintable(thema->FileName()));
            // Saved in order: old ones follow new ones, one generation apart.
            QVERIFY(generation <= previous && generation >= first - 1);
            previous = generation;
        }
    }
};

QTEST_GUILESS_MAIN(ArchiveCrashTest)
#include "ArchiveCrashTest.moc"
