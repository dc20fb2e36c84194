#include "browser/AddressResolver.h"
#include "browser/DriveList.h"
#include "tests/core/FakeFileTable.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <array>

using namespace Qt::StringLiterals;

namespace {
const FakeFileTable& disk()
{
    static const FakeFileTable files(
        {u"/home/"_s, u"/home/u/"_s, u"/home/u/a.htm"_s, u"/home/u/a b.htm"_s, u"/home/u/Ä.htm"_s,
         u"/home/u/100%.htm"_s, u"/home/u/c#1?.htm"_s, u"/home/u/x%20y"_s, u"/home/u/re\\al"_s,
         u"/home/u/end "_s, u"/opt/"_s, u"/opt/Tessera/"_s, u"/opt/Tessera/Lizenz.txt"_s,
         u"/opt/Tessera/README"_s, u"/opt/Tessera/Readme"_s, u"/mnt/"_s, u"/mnt/Stick/"_s,
         u"/mnt/Stick/Liste.htm"_s, u"/www.example.net"_s});
    return files;
}

struct Known {
    const char* typed;
    const char* url;
};
const std::array known{
    // Schemes and what only looks like one.
    Known{"http://example.org/a b%", "http://example.org/a%20b%25"},
    Known{"  HTTP:\\\\example.org\\x\\y?a\\b ", "http://example.org/x/y?a%5Cb"},
    Known{"http:example.org", "http://example.org"},
    Known{"https:///example.org/x", "https://example.org/x"},
    Known{"mailto:a@b.org", "mailto:a@b.org"},
    Known{"javascript:alert('x')", "javascript:alert('x')"},
    Known{"view-source:http://example.org/", "view-source:http://example.org/"},
    Known{"chrome:gpu", "chrome:gpu"}, Known{"about:blank", "about:blank"},
    Known{"foo://bar", "foo://bar"}, Known{"www.example.org", "http://www.example.org"},
    Known{"localhost:8080", "http://localhost:8080"},
    Known{"localhost:8080/x?y", "http://localhost:8080/x?y"}, Known{"c:8080", "http://c:8080"},
    Known{"müller.example", "http://xn--mller-kva.example"},
    // Paths.
    Known{"/home/u/a.htm", "file:///home/u/a.htm"},
    Known{"/opt/tessera\\lizenz.TXT", "file:///opt/Tessera/Lizenz.txt"},
    Known{"\\opt\\Tessera\\Lizenz.txt", "file:///opt/Tessera/Lizenz.txt"},
    Known{"/OPT/TESSERA/readme", "file:///opt/Tessera/README"},
    Known{"/home/u/a b.htm", "file:///home/u/a%20b.htm"},
    Known{"/home/u/A%20B.htm", "file:///home/u/a%20b.htm"},
    Known{"/home/u/x%20y", "file:///home/u/x%2520y"},
    Known{"/home/u/ä.HTM", "file:///home/u/%C3%84.htm"},
    Known{"/home/u/%C3%A4.htm", "file:///home/u/%C3%84.htm"},
    Known{"/home/u/100%.htm", "file:///home/u/100%25.htm"},
    Known{"/home/u/c#1?.htm", "file:///home/u/c%231%3F.htm"},
    Known{"/home/u/a.htm#top", "file:///home/u/a.htm#top"},
    Known{"/home/u/re\\al", "file:///home/u/re%5Cal"},
    Known{"/home/u/end ", "file:///home/u/end%20"}, Known{"//home/../HOME//u/", "file:///home/u/"},
    Known{"/home/u/a.htm/", "file:///home/u/a.htm"}, Known{"/", "file:///"},
    Known{"\\\\", "file:///"}, Known{"/home/u/gone%20x\\y", "file:///home/u/gone%20x/y"},
    // Paths without their first separator.
    Known{"home\\u\\a.htm", "file:///home/u/a.htm"},
    Known{"home\\u\\a%20b.htm", "file:///home/u/a%20b.htm"},
    Known{"Home/U/a.htm#top", "file:///home/u/a.htm#top"},
    Known{"home\\gone.htm", "file:///home/gone.htm"}, Known{"home", "file:///home"},
    Known{"Home", "http://home"}, Known{"www.example.net", "file:///www.example.net"},
    // Drives.
    Known{"C:", "file:///"}, Known{"d:", "file:///mnt/Stick/"},
    Known{"D:\\liste.htm", "file:///mnt/Stick/Liste.htm"},
    Known{"D:\\..\\..\\Liste.htm", "file:///mnt/Stick/Liste.htm"},
    Known{"C:\\home/u\\", "file:///home/u/"},
    // The spellings of "file:".
    Known{"file:///home/u/a.htm", "file:///home/u/a.htm"},
    Known{"FILE:/home/u/a.htm", "file:///home/u/a.htm"},
    Known{"file:home/u/a.htm", "file:///home/u/a.htm"},
    Known{"file://home/u/a.htm", "file:///home/u/a.htm"},
    Known{"file://LocalHost/home/u/a.htm?q#top", "file:///home/u/a.htm?q#top"},
    Known{"file:\\\\\\home\\u\\A b.htm", "file:///home/u/a%20b.htm"},
    Known{"file:////home/u/x%2520y", "file:///home/u/x%2520y"},
    Known{"file:///home/u/c#1?.htm", "file:///home/u/c%231%3F.htm"},
    Known{"file:///home/u/c%231%3F.htm#top", "file:///home/u/c%231%3F.htm#top"},
    Known{"file:///D:/Liste.htm#top", "file:///mnt/Stick/Liste.htm#top"},
    Known{"file://server/share/x", "file://server/share/x"},
    Known{"file:///home/u/%E4.htm", "file:///home/u/%E4.htm"}, Known{"file:", "file:///"},
    Known{"file://localhost", "file:///"}};

const std::array noAddresses{"",
                             "   ",
                             "-",
                             "a b",
                             "http://a b",
                             "foo://a b",
                             "http:",
                             "https:///",
                             "localhost:99999",
                             "1.2.3.999",
                             "http://1.2.3.4.5/x",
                             "E:\\x",
                             "Z:",
                             "C:foo",
                             "?x",
                             ":::",
                             "./x",
                             "..\\x",
                             "\"http://example.org",
                             "file:///a%00b"};

const DriveList& drives()
{
    static const DriveList list({{u"/mnt/Stick"_s, u"Data"_s, u"vfat"_s}});
    return list;
}
} // namespace

class AddressTest : public QObject {
    Q_OBJECT
private slots:
    void resolves_data()
    {
        QTest::addColumn<QByteArray>("url");
        for (const Known& address : known)
            QTest::newRow(address.typed) << QByteArray(address.url);
    }
    void resolves()
    {
        QFETCH(QByteArray, url);
        const QString typed = QString::fromUtf8(QTest::currentDataTag());
        QCOMPARE(resolveAddress(typed, disk(), drives()).toEncoded(), url);
    }

    void cannotBeAnAddress_data()
    {
        QTest::addColumn<QString>("typed");
        for (const char* typed : noAddresses)
            QTest::addRow("'%s'", typed) << QString::fromLatin1(typed);
        QTest::newRow("zero") << u"/home"_s + QChar(0);
        QTest::newRow("too long for the engine")
            << u"http://example.org/"_s + QString(1 << 21, u'a');
    }
    void cannotBeAnAddress()
    {
        QFETCH(QString, typed);
        QCOMPARE(resolveAddress(typed, disk(), drives()), QUrl());
    }

    void longTexts()
    {
        const auto length = [](const QString& typed) {
            return resolveAddress(typed, disk(), drives()).toEncoded().size();
        };
        const QString many(100000, u'a');
        QCOMPARE(length(u"example.org/"_s + many), 100019);
        QCOMPARE(length(u'/' + many), 100008);
        QCOMPARE(length(many), 0);
        QCOMPARE(length(u"/home/"_s.repeated(20000)), 120007);
        QCOMPARE(length(u"/home/../"_s.repeated(20000)), 8);
    }

    void drivesHaveLetters()
    {
        std::vector<Volume> volumes{{u"/run"_s, u""_s, u"tmpfs"_s},
                                    {u"/home"_s, u""_s, u"btrfs"_s},
                                    {u"/"_s, u"Größe & Co"_s, u"overlay"_s},
                                    {u"/snap/x/1"_s, u""_s, u"squashfs"_s},
                                    {u"/media/u/s/"_s, u" my\tstick\n"_s, u"vfat"_s}};
        const DriveList few(volumes);
        QCOMPARE(few.entries(),
                 (QStringList{u"C: [GRÖSSE & CO]"_s, u"D: [HOME]"_s, u"E: [MY STICK]"_s}));
        QCOMPARE(few.rootOf(u'e'), u"/media/u/s"_s);
        QCOMPARE(few.rootOf(u'F') + few.rootOf(u'B') + few.rootOf(u'['), QString());

        for (int i = 0; i < 40; ++i)
            volumes.push_back({u"/v%1"_s.arg(i), u""_s, u"ext4"_s});
        const DriveList many(volumes);
        QCOMPARE(many.entries().size(), 24);
        QCOMPARE(many.entries().constLast(), u"Z: [V20]"_s);
        QCOMPARE(many.rootOf(u'Z'), u"/v20"_s);
    }

    void thisMachine()
    {
        QTemporaryDir folder;
        const QString root = folder.path();
        QVERIFY(QDir(root).mkpath(u"Sub"_s));
        QVERIFY(QFile::link(root + u"/nowhere"_s, root + u"/Sub/Dangling"_s));
        QFile file(root + u"/Sub/Ä 100%#.txt"_s);
        QVERIFY(file.open(QIODevice::WriteOnly));

        const LinuxFileTable files;
        const DriveList mounted = mountedDrives();
        const auto resolved = [&](const QString& typed) {
            return resolveAddress(typed, files, mounted).toLocalFile();
        };
        QCOMPARE(resolved(root + u"\\sub\\ä 100%#.TXT"_s), file.fileName());
        QCOMPARE(resolved(u"C:"_s + root + u"/sub/dangling"_s), root + u"/Sub/Dangling"_s);
        QCOMPARE(resolved(root.sliced(1) + u"/SUB/"_s), root + u"/Sub/"_s);
        QVERIFY(!files.exists(root + QChar(0)));
        QVERIFY(mounted.entries().constFirst().startsWith(u"C: ["_s));
        QCOMPARE(mounted.rootOf(u'C'), u"/"_s);
    }

    void commandLines_data()
    {
        QTest::addColumn<QString>("path"); // empty: unchanged
        QTest::newRow("a.htm") << u"/home/u/a.htm"_s;
        QTest::newRow("a b.htm") << u"/home/u/a b.htm"_s;
        QTest::newRow("c#1?.htm") << u"/home/u/c#1?.htm"_s;
        QTest::newRow("re\\al") << u"/home/u/re\\al"_s;
        QTest::newRow("..\\u\\a.htm") << u"/home/u/a.htm"_s;
        QTest::newRow("../../opt/") << u"/opt/"_s;
        QTest::newRow(".") << u"/home/u"_s;
        for (const char* same : {"", " ", "A.htm", "/home/u/a.htm", "http://a.htm", "gone.htm"})
            QTest::newRow(same) << QString();
    }
    void commandLines()
    {
        QFETCH(QString, path);
        const QString typed = QString::fromUtf8(QTest::currentDataTag());
        QCOMPARE(absoluteIfFile(typed, u"/home/u"_s, disk()), path.isEmpty() ? typed : path);
    }

    void aFolderMayHaveTheNameOfAHost()
    {
        const FakeFileTable files({u"/www.example.org/"_s});
        QCOMPARE(absoluteIfFile(u"www.example.org"_s, u"/"_s, files), u"www.example.org"_s);
    }
};

QTEST_APPLESS_MAIN(AddressTest)
#include "AddressTest.moc"
