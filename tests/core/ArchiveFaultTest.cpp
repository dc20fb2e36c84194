#include "SampleArchive.h"
#include "base/Errors.h"
#include "base/SafeFile.h"
#include "bookmarks/ClosedArchive.h"
#include "bookmarks/DatedCopies.h"
#include "bookmarks/SavedBookmarks.h"

#include <QDir>
#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {
/// While it lives, no file of this process can grow past `most` bytes: a disk
/// that fills up.
class FullDisk {
public:
    explicit FullDisk(rlim_t most)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{most, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before{};
};

QDate dayOf(int number)
{
    return QDate(2026, 1, 1).addDays(number);
}

} // namespace

/// What becomes of the archive when files are bad or the disk is full.
class ArchiveFaultTest : public TestCase {
    Q_OBJECT
private slots:
    void init()
    {
        TestCase::init();
        QVERIFY(QDir().mkpath(path()));
    }

    void badIndexes()
    {
        const QByteArray good = golden(u"Book.bkm"_s);
        // Numbers that come twice, and nothing but zeros.
        for (const QByteArray& bytes : {good.left(336) + good.left(336), QByteArray(672, '\0')}) {
            init();
            writeBytes(file(u"Book.bkm"_s), bytes);
            Book book(path());
            fillSample(book, path());
            const auto before = book.colThema();
            QVERIFY_THROWS_EXCEPTION(Error, book.LoadAllThema());
            QCOMPARE(book.colThema(), before);
            book.SaveAllThema(); // does not overwrite what it could not read
            QCOMPARE(QDir(path()).entryList(QDir::Files), QStringList{u"Book.bkm"_s});
            QCOMPARE(bytesOf(file(u"Book.bkm"_s)), bytes);
            QCOMPARE(notWritten(book), QStringList{u"Book.bkm"_s});
        }
    }

    void badNamesStayInside()
    {
        for (const QString& name : {u"../x.bkm"_s, u"Book.bkm"_s}) {
            init();
            writeBytes(TestCase::path(u"x.bkm"_s), "outside");
            const QByteArray index = writeThemaRecords({{1, 1, u"Ordner"_s, name}});
            writeBytes(file(u"Book.bkm"_s), index);
            Book book(path());
            QVERIFY(book.LoadAllThema());
            const auto folder = book.colThema()->Item(1);
            QVERIFY_THROWS_EXCEPTION(FileError, folder->LoadBookmarks());
            folder->colBookmark(std::make_shared<BookmarkCollection>());
            folder->IsEdit(true);
            book.SaveAllThema();
            QCOMPARE(book.filesNotWritten().size(), std::size_t{1});
            QCOMPARE(bytesOf(file(u"Book.bkm"_s)), index);
            const QString before = QDir::currentPath();
            QVERIFY(QDir::setCurrent(path()));
            book.DeleteThema(1);
            QVERIFY(QDir::setCurrent(before));
            QCOMPARE(bytesOf(TestCase::path(u"x.bkm"_s)), "outside"_ba);
            QCOMPARE(bytesOf(file(u"Book.bkm"_s)), QByteArray());
        }
    }

    void addingToTheClosedArchiveLosesNothing()
    {
        ClosedArchive archive(path());
        QCOMPARE(archive.load(), QString()); // a new user's
        ChosenFolder place(archive.parts(), [&archive](const QModelIndex&) { archive.save(); });
        for (const bool isNew : {false, true}) {
            place.choose(u"1.bkm"_s);
            if (isNew)
                place.chooseNew(u"Reisen"_s);
            const QByteArray before = bytesOf(file(u"1.bkm"_s));
            const QByteArray index = bytesOf(file(u"Book.bkm"_s));
            {
                const FullDisk full(300);
                QVERIFY_THROWS_EXCEPTION(Error, place.AddBkmToArchive(u"n"_s, u"http://n"_s, {}));
            }
            QCOMPARE(bytesOf(file(u"1.bkm"_s)), before);
            QCOMPARE(bytesOf(file(u"Book.bkm"_s)), index);
            place.AddBkmToArchive(u"n"_s, u"http://n"_s, {}); // the user tries again
        }
        QCOMPARE(place.fileName(), u"2.bkm"_s);
        QCOMPARE(place.foldersWith(u"http://n"_s),
                 QStringList({u"Reisen"_s, u"Info + Lizenzvertrag"_s}));
        QCOMPARE(savedBookmarks(path()).size(), std::size_t{5});

        writeBytes(file(u"Book.bkm"_s), QByteArray(672, '\0'));
        QVERIFY_THROWS_EXCEPTION(Error, ClosedArchive(path()).load());
        QCOMPARE(bytesOf(file(u"Book.bkm"_s)), QByteArray(672, '\0'));
    }

    void whoeverReadsAlongLeavesAllAsItIs()
    {
        QVERIFY(savedBookmarks(path()).empty());
        Book book(path());
        fillSample(book, path());
        book.SaveAllThema();
        QVERIFY(QFile::remove(file(u"12.bkm"_s)));
        writeBytes(file(u"9.bkm"_s), QByteArray(1444, '\0')); // numbers that come twice
        const QStringList before = QDir(path()).entryList();
        QStringList titles;
        for (const SavedBookmark& bookmark : savedBookmarks(path()))
            titles << bookmark.titel.left(5) + bookmark.url.left(9);
        QCOMPARE(titles,
                 QStringList({u"Größehttp://a."_s, u"?? ? http://b."_s, u"LLLLLuuuuuuuuu"_s}));
        QCOMPARE(QDir(path()).entryList(), before);
    }

    void unreadableFoldersRefuseChanges()
    {
        Book book(path());
        fillSample(book, path());
        book.SaveAllThema();
        const QString name = file(u"12.bkm"_s);
        const QByteArray bytes(1444, '\0');
        writeBytes(name, bytes);
        QVERIFY(book.LoadAllThema());
        book.loadFolders();
        QCOMPARE(book.filesNotRead().size(), std::size_t{1});
        const auto folder = book.colThema()->Item(4);
        QVERIFY(folder->refusesChanges() && !folder->colBookmark());
        folder->IsEdit(true);
        book.SaveAllThema();
        QCOMPARE(notWritten(book), QStringList{u"12.bkm"_s});
        QCOMPARE(bytesOf(name), bytes);
        writeBytes(name, golden(u"12.bkm"_s));
        folder->LoadBookmarks();
        QVERIFY(!folder->refusesChanges());
    }

    void failedExportsKeepTheOldFile()
    {
        const QString old = file(u"old"_s);
        const QString twin = file(u"twin"_s);
        writeBytes(old, "old");
        for (bool isTwin : {false, true}) { // written anew, and in place
            if (isTwin)
                QCOMPARE(::link(qPrintable(old), qPrintable(twin)), 0);
            const FullDisk disk(800);
            QVERIFY_THROWS_EXCEPTION(FileError, writeFile(old, QByteArray(1000, 'x')));
            QVERIFY_THROWS_EXCEPTION(FileError, writeFile(file(u"new"_s), QByteArray(1000, 'x')));
        }
        QCOMPARE(bytesOf(old), "old"_ba);
        QCOMPARE(QDir(path()).entryList(QDir::Files).join(u' '), u"old twin"_s);
    }

    void oneFailureAmongManyFilesStaysAlone()
    {
        constexpr int count = 300;           // more than are begun at a time
        QVERIFY(QDir(path()).mkdir(u"7"_s)); // a folder is where a file should be
        int failures = 0;
        const auto failed = [&failures](const FileError& error) {
            failures += error.text().contains(u"/7'"_s) ? 1 : count;
        };
        FileReplacer files;
        for (int i = 0; i < count; ++i)
            files.replace(file(QString::number(i)), QByteArray::number(i), failed);
        files.replace(file(u"5"_s), "later", failed);
        files.finish();
        QCOMPARE(failures, 1);
        QCOMPARE(QDir(path()).entryList(QDir::Files).size(), count - 1); // and none begun
        QCOMPARE(bytesOf(file(u"5"_s)), "later"_ba);
        QCOMPARE(bytesOf(file(u"299"_s)), "299"_ba);
    }

    void messagesAreGermanAndClean()
    {
        const auto text = [](const QString& name, int code) {
            return FileError(name, qt_error_string(code)).text();
        };
        QCOMPARE(text(u"a\x1b[2J\n\u202E"_s + QString::fromUcs4(U"\U000E0041"), EROFS),
                 u"Die Datei 'a [2J ' ist nicht zugänglich: Der Datenträger ist "
                 "schreibgeschützt."_s);
        QVERIFY(text(u"a"_s, EBADMSG).endsWith(qt_error_string(EBADMSG)));
        QCOMPARE(faultText(u"-"_s, {{u"O\n"_s, u"1\x07.bkm"_s, u"r"_s}}),
                 u"-\n\n'1 .bkm' (Ordner 'O '):\nr"_s);
    }

    void aDayHasOneCopy()
    {
        const auto copy = [this](int day) { return makeDatedCopy(path(), copies(), dayOf(day)); };
        QCOMPARE(copy(0), QString());
        QVERIFY(!QDir(copies()).exists()); // there is no archive yet
        Book book(path());
        fillSample(book, path());
        book.SaveAllThema();
        QVERIFY(QFile::rename(file(u"3.bkm"_s), file(u"3.bkm.bak"_s))); // a save that failed
        QVERIFY(QDir().mkpath(copies() + u"/2025-12-31.neu/x"_s));      // a killed program's
        for (int day = 0; day < 12; ++day)
            QCOMPARE(copy(day), QString());
        QCOMPARE(QDir(copies()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), daysOfCopies());
        QCOMPARE(daysOfCopies().size(), 10);
        const QString first = copies() + u"/2026-01-03"_s;
        QCOMPARE(QDir(first).entryList(QDir::Files),
                 QStringList({u"12.bkm"_s, u"3.bkm"_s, u"9.bkm"_s, u"Book.bkm"_s}));
        for (const QString& name : QDir(first).entryList(QDir::Files)) {
            QCOMPARE(bytesOf(first + u'/' + name), golden(name));
            QCOMPARE(QFile::permissions(first + u'/' + name) & 0xf0ff,
                     QFile::Permissions(QFile::ReadOwner)); // besides what the caller may
        }
        writeBytes(file(u"Book.bkm"_s), golden(u"Book.bkm"_s).left(336));
        QCOMPARE(copy(11), QString()); // not again
        QCOMPARE(bytesOf(copies() + u"/2026-01-12/Book.bkm"_s), golden(u"Book.bkm"_s));
        QCOMPARE(copy(-4000), QString()); // the clock is wrong
        QCOMPARE(daysOfCopies().size(), 10);
        QVERIFY(daysOfCopies().first().startsWith(u"2015"_s));
        {
            const FullDisk disk(300);
            QVERIFY(!copy(12).isEmpty());
        }
        QCOMPARE(daysOfCopies().last(), u"2026-01-12"_s);
        QCOMPARE(QDir(copies()).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 10);
    }

private:
    // One level down, so that a file that escapes its folder is seen.
    QString path() const { return TestCase::path(u"program"_s); }
    QString file(const QString& name) const { return path() + u'/' + name; }
    QString copies() const { return TestCase::path(u"data/archiv"_s); }
    QStringList daysOfCopies() const
    {
        return QDir(copies()).entryList({u"*[0-9]"_s}, QDir::Dirs, QDir::Name);
    }
    static QStringList notWritten(const Book& book)
    {
        QStringList names;
        for (const ArchiveFault& fault : book.filesNotWritten())
            names << fault.fileName;
        return names;
    }
};

QTEST_GUILESS_MAIN(ArchiveFaultTest)
#include "ArchiveFaultTest.moc"
