#include "base/Prefer.h"
#include "app/ProgramFolder.h"
#include "base/Errors.h"
#include "tests/TestCase.h"

#include <QDir>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class PreferTest : public TestCase {
    Q_OBJECT
private slots:
    void firstStartWritesTheDefaults()
    {
        Prefer pref(path());
        pref.LoadPref();
        QCOMPARE(pref.HomeUrl(), path() + u"\\Lizenz.txt"_s);

        QByteArray expected("\xFF\xFF\xFF\xFF\x32\x00\x80\x25\x20\x1C\x00\x00\x01\x00", 14);
        expected += (path().toLatin1() + "\\Lizenz.txt").leftJustified(200);
        expected += QByteArray("https://duckduckgo.com/").leftJustified(200);
        expected += QByteArray(200, ' ') + "\xFF\xFF\xFF\xFF";
        QCOMPARE(content(), expected);
    }

    void brokenFilesAreReplaced()
    {
        const QByteArray good = goodFile();
        for (const QByteArray& bytes : {QByteArray(618, '\0'), good.left(414), // no mail client
                                        QByteArray(good).replace(414, 1, "\0"_ba)}) {
            writeBytes(file(), bytes);
            Prefer pref(path());
            pref.LoadPref();
            QCOMPARE(int{pref.HistoryRows()}, 50);
            QCOMPARE(content().size(), 618);
            QVERIFY(content().startsWith("\xFF\xFF"));
        }
    }

    void shortButGoodFilesLoad()
    {
        writeBytes(file(), goodFile().left(415));
        Prefer pref(path());
        pref.LoadPref();
        QCOMPARE(int{pref.HistoryRows()}, -3);
        QCOMPARE(int{pref.Toolbar()}, 0);
        QCOMPARE(content().size(), 415);
    }

    void oddValuesAreKept()
    {
        writeBytes(file(), goodFile() + "tail");
        Prefer pref(path());
        pref.LoadPref();
        QCOMPARE(int{pref.StartBrowser()}, 5);
        QCOMPARE(int{pref.MdiWidth()}, 0);
        QCOMPARE(int{pref.StatusBar()}, 7);
        QCOMPARE(pref.HomeUrl(), u"home\r\n"_s); // blanks go, line ends stay
        QCOMPARE(pref.SearchEngine(), u"\u00A0s"_s);
        pref.SavePref();
        QByteArray expected = goodFile() + "tail";
        expected.replace(14, 200, QByteArray("home\r\n").leftJustified(200));
        expected.replace(214, 200, QByteArray("\xA0s").leftJustified(200));
        QCOMPARE(content(), expected);
    }

    void pipesAreReplacedAndDoNotHang()
    {
        QCOMPARE(::mkfifo(QFile::encodeName(file()).constData(), 0600), 0);
        Prefer pref(path());
        pref.LoadPref();
        QCOMPARE(int{pref.HistoryRows()}, 50);
        QCOMPARE(content().size(), 618);
    }

    void whatCannotBeReadIsNotReplaced()
    {
        // A folder, and a link to itself: not even root reads these.
        QDir(path()).mkdir(u"Pref.tsp"_s);
        for (int i = 0; i < 2; ++i) {
            Prefer pref(path());
            QVERIFY_THROWS_EXCEPTION(FileError, pref.LoadPref());
            QCOMPARE(int{pref.HistoryRows()}, 50);
            QVERIFY(QDir(path()).rmdir(u"Pref.tsp"_s) || QFile::remove(file()));
            QVERIFY_THROWS_EXCEPTION(FileError, pref.SavePref()); // readable by now or not
            QVERIFY(QFile::link(file(), file()));
        }
    }

    void aFolderThatTheFieldCannotHold()
    {
        for (const QString& name : {QString(190, u'a'), u"Ж"_s}) {
            QVERIFY(QDir(path()).mkdir(name));
            Prefer first(path(name));
            first.LoadPref();
            Prefer second(path(name));
            second.LoadPref();
            QCOMPARE(second.HomeUrl(), path(name) + u"\\Lizenz.txt"_s);
        }
    }

    void textsAreCutInTheFileOnly()
    {
        Prefer pref(path());
        pref.LoadPref();
        pref.MailClient(u"  "_s + QString(248, u'ä'));
        pref.SavePref();
        QCOMPARE(pref.MailClient().size(), 250);
        pref.LoadPref();
        QCOMPARE(pref.MailClient(), QString(198, u'ä'));
    }

    void programFolderOfOneAndOfAll()
    {
        const QString own = path(u"data/tessera-program"_s);
        QCOMPARE(programFolder(path(), path(u"data"_s)), path());
        QVERIFY(!QDir(own).exists());
        for (const QString& beside : {u"/usr/lib"_s, path(u"gone"_s)}) {
            QCOMPARE(programFolder(beside, path(u"data"_s)), own);
            QVERIFY(QDir(own).removeRecursively()); // it was made
        }
        if (::geteuid() == 0)
            return; // may write everywhere
        QVERIFY(QDir(path()).mkpath(u"closed"_s));
        writeBytes(path(u"closed/Pref.tsp"_s), goodFile());
        ::chmod(qPrintable(path(u"closed"_s)), S_IRUSR | S_IXUSR);
        QCOMPARE(programFolder(path(u"closed"_s), path(u"data"_s)), path(u"closed"_s));
    }

private:
    static QByteArray goodFile()
    {
        return QByteArray("\xFF\xFF\x05\x00\xFD\xFF\x00\x00\x20\x1C\x02\x00\x07\x00", 14) +
               QByteArray("  home\r\n").leftJustified(200) +
               QByteArray("\xA0s").leftJustified(200) + QByteArray("mail").leftJustified(200) +
               QByteArray("\x00\x00\x09\x00", 4);
    }
    QString file() const { return path(u"Pref.tsp"_s); }
    QByteArray content() const { return bytesOf(file()); }
};

QTEST_APPLESS_MAIN(PreferTest)
#include "PreferTest.moc"
