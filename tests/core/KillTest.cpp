#include "SampleArchive.h"
#include "app/OpenWindowsFile.h"
#include "base/Errors.h"
#include "base/Prefer.h"
#include "bookmarks/ArchiveFiles.h"
#include "bookmarks/DatedCopies.h"

#include <QRandomGenerator>
#include <QThread>

#include <csignal>
#include <new>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {
constexpr int folderCount = 8;
constexpr int bookmarkCount = 60;
constexpr int windowCount = 200;

/// Everything is written over and over; each time is a generation, whose number all parts of
/// what is written carry.
enum Kind { Preferences, Windows, Archive, kinds };

/// The generations that were begun, and those that are kept by the writer's own word. It is
/// shared with the process that is killed.
struct Progress {
    std::array<std::atomic<int>, kinds> begun;
    std::array<std::atomic<int>, kinds> kept;
};

/// A day for each generation. The clock is put back once.
QDate dayOf(int generation)
{
    constexpr int putBack = 10;
    return QDate(2026, 1, 1).addDays(generation < putBack ? generation : generation - 3000);
}

std::shared_ptr<BookmarkCollection> bookmarksOf(int generation)
{
    auto bookmarks = std::make_shared<BookmarkCollection>();
    for (int i = 0; i < bookmarkCount; ++i)
        bookmarks->Add(makeBookmark(0, QString::number(generation), {}, {}));
    return bookmarks;
}

/// The folder's generation, or -1 when it is not whole.
int generationOf(const Thema& folder)
{
    if (!folder.colBookmark() || folder.colBookmark()->Count() != bookmarkCount)
        return -1;
    const QString text = folder.colBookmark()->Item(1)->Titel();
    for (const auto& bookmark : *folder.colBookmark())
        if (bookmark->Titel() != text)
            return -1;
    return text.toInt();
}

/// The disk below a folder, if it is one that may run full.
class SmallDisk {
public:
    explicit SmallDisk(const QString& folder) : m_ballast(folder + u"/ballast"_s)
    {
        m_isSmall = qEnvironmentVariableIsSet("TESSERA_SMALL_DISK");
    }
    /// Leaves only a little room, at random, now and then.
    void change()
    {
        constexpr int pieces = 100'000;
        m_ballast.remove();
        if (!m_isSmall || QRandomGenerator::global()->bounded(3) != 0 ||
            !m_ballast.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            return;
        while (m_ballast.write(QByteArray(pieces, 'x')) == pieces) {
        }
        m_ballast.resize(std::max<qint64>(
            m_ballast.size() - QRandomGenerator::global()->bounded(4 * pieces), 0));
        m_ballast.close();
    }

private:
    QFile m_ballast;
    bool m_isSmall = false;
};

/// The files of one user: preferences, open windows, and an archive with its dated copies.
class Files {
public:
    explicit Files(const QString& path) : m_path(path), m_disk(path) {}

    /// Makes an archive of generation 0.
    static void makeArchive(const QString& folder)
    {
        QDir().mkpath(folder);
        Book book(folder);
        for (int sequenz = 1; sequenz <= folderCount; ++sequenz)
            addThema(book, folder, sequenz, u"Ordner"_s)->colBookmark(bookmarksOf(0));
        book.SaveAllThema();
    }

    void writeForever(Progress& progress, int generation)
    {
        Book book(program());
        book.beforeSaving([&] { makeDatedCopy(program(), copies(), dayOf(generation)); });
        book.LoadAllThema();
        for (;; ++generation) {
            m_disk.change();
            const auto write = [&](Kind kind, bool (Files::*work)(int)) {
                progress.begun[kind] = generation;
                if ((this->*work)(generation))
                    progress.kept[kind] = generation;
            };
            write(Preferences, &Files::writePreferences);
            write(Windows, &Files::writeWindows);
            progress.begun[Archive] = generation;
            if (writeArchive(book, generation))
                progress.kept[Archive] = generation;
        }
    }

    /// What a start finds: the generations of all parts of a kind.
    std::array<QList<int>, kinds> read() const
    {
        std::array<QList<int>, kinds> found;
        Prefer preferences(program());
        preferences.LoadPref();
        for (const QString& text :
             {preferences.HomeUrl(), preferences.SearchEngine(), preferences.MailClient()})
            found[Preferences].append(text.toInt());
        if (const auto left = OpenWindowsFile(windows(), {}).left())
            for (const OpenWindows::Window& window : left->windows)
                found[Windows].append(window.address.toInt());
        found[Archive] = readArchive(program());
        return found;
    }

    /// The generations of an archive's folders; none if the program would complain of it.
    static QList<int> readArchive(const QString& folder)
    {
        QList<int> found;
        ArchiveFiles files(folder);
        if (files.load().isEmpty())
            for (const auto& thema : *files.shownFolders())
                found.append(generationOf(*thema));
        return found;
    }

    QString program() const { return m_path + u"/program"_s; }
    QString copies() const { return m_path + u"/data/archiv"_s; }
    QString windows() const { return m_path + u"/data/fenster.json"_s; }

private:
    bool writePreferences(int generation)
    {
        Prefer preferences(program());
        preferences.LoadPref();
        const QString number = QString::number(generation);
        preferences.HomeUrl(number);
        preferences.SearchEngine(number);
        preferences.MailClient(number);
        try {
            preferences.SavePref();
            return true;
        } catch (const Error&) {
            return false;
        }
    }

    bool writeWindows(int generation)
    {
        OpenWindows open;
        for (int i = 0; i < windowCount; ++i)
            open.windows.append({QString::number(generation), u"Seite"_s, {}, {}});
        bool isKept = true;
        OpenWindowsFile(windows(), [&isKept](const QString&) { isKept = false; }).keep(open);
        return isKept;
    }

    static bool writeArchive(Book& book, int generation)
    {
        for (const auto& folder : *book.colThema()) {
            folder->colBookmark(bookmarksOf(generation));
            folder->IsEdit(true);
        }
        book.SaveAllThema();
        return book.filesNotWritten().empty();
    }

    QString m_path;
    SmallDisk m_disk;
};
} // namespace

/// What is left of the program's files when it is killed while it writes them.
class KillTest : public TestCase {
    Q_OBJECT
private slots:
    /// As many kills as TESSERA_KILLS says, 30 without it; one after the other on the same files.
    void nothingIsLostOrHalf()
    {
        const int wanted = qEnvironmentVariableIntValue("TESSERA_KILLS");
        const int kills = wanted > 0 ? wanted : 30;
        Files files(path());
        Files::makeArchive(files.program());
        Prefer(files.program()).LoadPref();
        int generation = 1;
        int done = 0;
        for (; done < kills && !QTest::currentTestFailed(); ++done) {
            killOnce(files, generation);
            check(files);
            generation = m_progress->begun[Archive] + 1;
        }
        qInfo("%d kills within %d generations", done, generation);
    }

private:
    void killOnce(Files& files, int generation) const
    {
        const pid_t child = ::fork();
        if (child == 0) {
            ignoringErrors([&] { files.writeForever(*m_progress, generation); });
            ::_exit(1);
        }
        QVERIFY(QTest::qWaitFor([&] { return m_progress->begun[Archive] >= generation; }));
        // The moment of the kill is what is being tried; nothing is awaited.
        QThread::usleep(QRandomGenerator::global()->bounded(60000U));
        ::kill(child, SIGKILL);
        int status = 0;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QVERIFY2(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL,
                 "The writer has ended by itself.");
    }

    void check(const Files& files) const
    {
        const auto found = files.read();
        const std::array<qsizetype, kinds> parts{3, windowCount, folderCount};
        for (std::size_t kind = 0; kind < kinds; ++kind) {
            const int kept = m_progress->kept[kind];
            const int begun = m_progress->begun[kind];
            if (kept == 0)
                continue;
            QCOMPARE(found[kind].size(), parts[kind]);
            const auto [least, most] = std::minmax_element(found[kind].begin(), found[kind].end());
            QVERIFY2(
                *least >= kept && *most <= begun,
                qPrintable(
                    u"%1: %2 to %3 of %4 to %5"_s.arg(kind).arg(*least).arg(*most).arg(kept).arg(
                        begun)));
            QVERIFY2(*least == *most || kind == Archive, "half of the old, half of the new");
        }
        checkCopies(files.copies());
        checkNothingElse(files);
    }

    static void checkCopies(const QString& copies)
    {
        const QStringList days = QDir(copies).entryList({u"*[0-9]"_s}, QDir::Dirs);
        QVERIFY(days.size() <= 11); // the oldest goes after the newest has come
        for (const QString& day : days) {
            const QList<int> found = Files::readArchive(copies + u'/' + day);
            QCOMPARE(found.size(), folderCount);
            QVERIFY2(!found.contains(-1), qPrintable(day));
        }
    }

    static void checkNothingElse(const Files& files)
    {
        QStringList expected{u"Book.bkm"_s, u"Pref.tsp"_s};
        for (int sequenz = 1; sequenz <= folderCount; ++sequenz)
            expected.append(QString::number(sequenz) + u".bkm"_s);
        expected.sort();
        QCOMPARE(QDir(files.program()).entryList(QDir::Files, QDir::Name).join(u' '),
                 expected.join(u' '));
        const QDir data(QFileInfo(files.windows()).path());
        QVERIFY(data.entryList(QDir::Files).size() <= 1);
    }

    static Progress* shared()
    {
        void* const memory = ::mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE,
                                    MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        return memory == MAP_FAILED ? nullptr : new (memory) Progress{};
    }

    Progress* m_progress = shared();
};

QTEST_GUILESS_MAIN(KillTest)
#include "KillTest.moc"
