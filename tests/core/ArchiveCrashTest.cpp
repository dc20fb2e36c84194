#include "SampleArchive.h"
#include "base/Guarded.h"

#include <QCoreApplication>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>

#include <cstdio>

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
        if (generation == 0)
            std::puts("saved");
        std::fflush(stdout);
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

class ArchiveCrashTest : public QObject {
    Q_OBJECT
private slots:
    /// As many kills as TESSERA_KILLS says, 20 without it.
    void killedWhileSaving()
    {
        const int wanted = qEnvironmentVariableIntValue("TESSERA_KILLS");
        const int kills = wanted > 0 ? wanted : 20;
        for (int i = 0; i < kills && !QTest::currentTestFailed(); ++i) {
            const QTemporaryDir folder;
            killOnce(folder.path());
            checkWhole(folder.path());
        }
    }

private:
    static void killOnce(const QString& path)
    {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {u"--save-forever"_s, path});
        QVERIFY(child.waitForReadyRead());
        // The moment of the kill is what is being tried; nothing is awaited.
        QThread::usleep(QRandomGenerator::global()->bounded(20000U));
        child.kill();
        QVERIFY(child.waitForFinished());
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

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == u"--save-forever"_s) {
        ignoringErrors([&arguments] { saveForever(arguments.value(2)); });
        return 1;
    }
    ArchiveCrashTest test;
    return QTest::qExec(&test, arguments);
}

#include "ArchiveCrashTest.moc"
