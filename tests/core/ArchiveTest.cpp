#include "SampleArchive.h"
#include "base/SafeFile.h"
#include "bookmarks/ExportFormats.h"
#include "bookmarks/UnlistedFiles.h"

#include <QDir>
#include <QTimeZone>

#include <sys/file.h>

using namespace Qt::StringLiterals;

class ArchiveTest : public TestCase {
    Q_OBJECT
private slots:
    void initTestCase() { fillSample(m_book, u"/nowhere"_s); }

    void savesGoldenFiles()
    {
        Book book(path());
        fillSample(book, path());
        writeBytes(path(u"6.bkm"_s), "old"); // a folder without bookmarks loses its file
        book.IsEdit(true);
        book.SaveAllThema();
        QVERIFY(book.filesNotWritten().empty());
        const QStringList names{u"12.bkm"_s, u"3.bkm"_s, u"9.bkm"_s, u"Book.bkm"_s};
        QCOMPARE(QDir(path()).entryList(QDir::Files, QDir::Name), names);
        for (const QString& name : names)
            QCOMPARE(bytesOf(path(name)), golden(name));
    }

    void loadsGoldenFiles()
    {
        for (const QString& name : {u"12.bkm"_s, u"3.bkm"_s, u"9.bkm"_s, u"Book.bkm"_s})
            writeBytes(path(name), golden(name));
        Book book(path());
        QVERIFY(book.LoadAllThema());
        book.loadFolders();
        QCOMPARE(book.GetNewKey(), 13);
        const Thema& first = *book.colThema()->Item(u">1"_s);
        QCOMPARE(first.DirName(), u"Ämter <Süd>"_s);
        QCOMPARE(first.colBookmark()->Item(1)->Info(), u"Preis: 5 €\r\nzweite Zeile\r\n"_s);
        QCOMPARE(first.colBookmark()->Item(2)->Titel(), u"?? ? </A>"_s);
        QCOMPARE(first.colBookmark()->Item(3)->Info(), QString(319, u'i') + u'\r');
        QCOMPARE(bytesOf(path(u"6.bkm"_s)), QByteArray()); // created empty
    }

    void numbersOnDiskAreTrusted()
    {
        const QByteArray text(720, 'a');
        writeBytes(path(u"4.bkm"_s), "\x07\x00"_ba + text + "\xF7\xFF" + text + "rest");
        Thema folder(path());
        folder.FileName(u"4.bkm"_s);
        folder.Nr(4);
        folder.LoadBookmarks();
        QCOMPARE(folder.colBookmark()->Count(), 2);
        QCOMPARE(folder.colBookmark()->Key(2), u">4|-9"_s);
        QCOMPARE(int{folder.GetNewKey()}, 3);
    }

    void savingUnchangedDeletes()
    {
        Thema folder(path());
        folder.FileName(u"1.bkm"_s);
        folder.colBookmark(std::make_shared<BookmarkCollection>());
        for (const bool edit : {false, true}) {
            writeBytes(path(u"1.bkm"_s), "old");
            writeBytes(path(u"1.bkm.bak"_s), "older");
            folder.IsEdit(edit);
            folder.SaveBookmarks();
            const QStringList left = edit ? QStringList{u"1.bkm"_s} : QStringList{};
            QCOMPARE(QDir(path()).entryList(QDir::Files), left);
        }
    }

    void deletesInTheCurrentFolderOnly()
    {
        Book book(path());
        fillSample(book, path());
        book.SaveAllThema();
        const QString before = QDir::currentPath();
        const QTemporaryDir elsewhere;
        QVERIFY(QDir::setCurrent(elsewhere.path()));
        writeBytes(u"3.bkm"_s, "in the way");
        book.DeleteThema(1);
        QVERIFY(!QFile::exists(elsewhere.filePath(u"3.bkm"_s)));
        QVERIFY(QFile::exists(path(u"3.bkm"_s)));
        QVERIFY(QDir::setCurrent(path()));
        book.DeleteThema(3);
        QVERIFY(QDir::setCurrent(before));
        QVERIFY(!QFile::exists(path(u"12.bkm"_s)));
    }

    void defaultArchiveKeepsOldFiles()
    {
        writeBytes(path(u"1.bkm.bak"_s), "old");
        writeBytes(path(u"12.bkm"_s), "older");
        QCOMPARE(keepUnlistedFiles(path(), {}).join(u' '), u"1.bkm.alt 12.bkm.alt"_s);
        QCOMPARE(bytesOf(path(u"1.bkm.alt"_s)), "old"_ba);
        QCOMPARE(bytesOf(path(u"12.bkm.alt"_s)), "older"_ba);
        writeBytes(path(u"2.bkm"_s), "listed");
        writeBytes(path(u"3.bkm"_s), "lost");
        writeBytes(path(u"Book.bkm"_s), QByteArray(themaRecordSize, ' '));
        QCOMPARE(keepUnlistedFiles(path(), {u"2.bkm"_s}), QStringList());
        writeBytes(path(u"Book.bkm"_s), QByteArray(themaRecordSize + 1, ' '));
        QCOMPARE(keepUnlistedFiles(path(), {u"2.bkm"_s}).join(u' '), u"Book.bkm.alt 3.bkm.alt"_s);
        QCOMPARE(keepUnlistedFiles(path(), {u"2.bkm"_s}), QStringList()); // is kept already
    }

    void exportsGoldenFiles()
    {
        const Thema& first = *m_book.colThema()->Item(1);
        QCOMPARE(exportFolderText(first), golden(u"folder.txt"_s));
        QCOMPARE(exportArchiveText(m_book), golden(u"archive.txt"_s));
        QCOMPARE(exportFolderHtml(first), golden(u"folder.htm"_s));
        QCOMPARE(exportArchiveHtml(m_book), golden(u"archive.htm"_s));
        QCOMPARE(exportFolderNetscape(first, german), golden(u"folder-netscape.htm"_s));
        QCOMPARE(exportArchiveNetscape(m_book, german), golden(u"archive-netscape.htm"_s));
    }

    void exportsTimes()
    {
        const auto bytes = [](const QDateTime& now, QLocale::Language language) {
            return exportFolderNetscape(Thema(u"/nowhere"_s), {now, QLocale(language)});
        };
        // The zone has no part in it.
        const QDateTime tokyo(QDate(2026, 11, 5), QTime(0, 0, 7), QTimeZone("Asia/Tokyo"));
        QVERIFY(bytes(tokyo, QLocale::English).contains("(5. Nov 2026, 00:00:07)"));
        QVERIFY(bytes(tokyo, QLocale::English).contains("ADD_DATE=\"1793836807\">"));
        const QDateTime early(QDate(1969, 12, 31), QTime(23, 59, 59));
        QVERIFY(bytes(early, QLocale::German).contains("(31. Dez 1969, 23:59:59)"));
        QVERIFY(bytes(early, QLocale::German).contains("ADD_DATE=\"-1\">"));
        const QDateTime late(QDate(2038, 1, 19), QTime(3, 14, 8));
        QVERIFY_THROWS_EXCEPTION(OverflowError, bytes(late, QLocale::German));
    }

    void exportWritesOverWhatIsThere()
    {
        const QString file = path(u"Export ü.txt"_s);
        const QString link = path(u"link"_s);
        writeBytes(file, QByteArray(1000, 'x'));
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner));
        QVERIFY(QFile::link(file, link));
        writeFile(link, "kurz");
        QCOMPARE(bytesOf(file), "kurz"_ba);
        QVERIFY(QFileInfo(link).isSymLink());
        QVERIFY(!QFileInfo(file).permissions().testFlag(QFile::ReadOther));
        QVERIFY_THROWS_EXCEPTION(FileError, writeFile(path(), "x"));
        QVERIFY_THROWS_EXCEPTION(FileError, writeFile(u"/dev/full"_s, QByteArray(100000, 'x')));
        QCOMPARE(QDir(path()).entryList({u"tessera*"_s}), QStringList());
    }

    void abandonedFilesGo()
    {
        const QStringList gone{u"6.bkm.OMftUi"_s, u"Book.bkm.aBcDeF"_s, u"tessera-0123abcd.neu"_s};
        const QStringList stay{u"6.bkm"_s,        u"6.bkm.Backup"_s, u"6.bkm.backup"_s,
                               u"6.bkm.OMftU1"_s, u"liste.OMftUi"_s, u"tessera-0123abcd.neu2"_s};
        for (const QString& name : gone + stay)
            writeBytes(path(name), "x");
        QFile busy(path(u"tessera-00000000.neu"_s)); // another copy is at it
        QVERIFY(busy.open(QIODevice::WriteOnly) && ::flock(busy.handle(), LOCK_EX) == 0);
        removeAbandonedFiles(path());
        for (const QString& name : stay)
            QVERIFY2(QFile::exists(path(name)), qPrintable(name));
        QCOMPARE(QDir(path()).entryList(QDir::Files).size(), stay.size() + 1);
    }

private:
    const ExportTime german{QDateTime(QDate(2026, 3, 5), QTime(14, 3, 9)),
                            QLocale(QLocale::German, QLocale::Germany)};
    Book m_book{u"/nowhere"_s};
};

QTEST_APPLESS_MAIN(ArchiveTest)
#include "ArchiveTest.moc"
