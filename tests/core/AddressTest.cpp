#include "address/AddressResolver.h"
#include "address/SearchAddress.h"
#include "tests/TestCase.h"
#include "tests/core/FakeFileTable.h"

#include <QDir>

#include <array>

using namespace Qt::StringLiterals;

namespace {
using Known = std::pair<const char*, const char*>;
const std::array known{
    // Schemes and what only looks like one.
    Known{"http://example.org/a b%", "http://example.org/a%20b%25"},
    Known{"  HTTP:\\\\example.org\\x\\y?a\\b ", "http://example.org/x/y?a%5Cb"},
    Known{"javascript:alert('x')", "javascript:alert('x')"},
    Known{"www.example.org", "http://www.example.org"},
    Known{"localhost:8080", "http://localhost:8080"}, Known{"c:8080", "http://c:8080"},
    Known{"h4:%300", "http://h4:0"}, Known{"müller.example", "http://xn--mller-kva.example"},
    // Paths.
    Known{"/opt/tessera\\lizenz.TXT", "file:///opt/Tessera/Lizenz.txt"},
    Known{"/OPT/TESSERA/readme", "file:///opt/Tessera/README"},
    Known{"/home/u/A%20B.htm", "file:///home/u/a%20b.htm"},
    Known{"/home/u/x%20y", "file:///home/u/x%2520y"},
    Known{"/home/u/%C3%A4.htm", "file:///home/u/%C3%84.htm"},
    Known{"/home/u/100%.htm", "file:///home/u/100%25.htm"},
    Known{"/home/u/a.htm#top", "file:///home/u/a.htm#top"},
    Known{"/home/u/re\\al", "file:///home/u/re%5Cal"},
    Known{"/home/u/end ", "file:///home/u/end%20"}, Known{"//home/../HOME//u/", "file:///home/u/"},
    Known{"\\\\", "file:///"}, Known{"/home/u/gone%20x\\y", "file:///home/u/gone%20x/y"},
    // Paths without their first separator.
    Known{"home\\u\\a.htm", "file:///home/u/a.htm"}, Known{"Home", "http://home"},
    Known{"www.example.net", "file:///www.example.net"},
    // Drives.
    Known{"C:", "file:///"}, Known{"D:\\liste.htm", "file:///mnt/Stick/Liste.htm"},
    Known{"D:\\..\\..\\Liste.htm", "file:///mnt/Stick/Liste.htm"},
    Known{"C:\\home/u\\", "file:///home/u/"},
    // The spellings of "file:".
    Known{"FILE:/home/u/a.htm", "file:///home/u/a.htm"},
    Known{"file://LocalHost/home/u/a.htm?q#top", "file:///home/u/a.htm?q#top"},
    Known{"file:\\\\\\home\\u\\A b.htm", "file:///home/u/a%20b.htm"},
    Known{"file://home\\u\\100%.htm/#::\\", "file:///home/u/100%25.htm#::/"},
    Known{"file:////home/u/x%2520y", "file:///home/u/x%2520y"},
    Known{"file:///home/u/c%231%3F.htm#top", "file:///home/u/c%231%3F.htm#top"},
    Known{"file:///D:/Liste.htm#top", "file:///mnt/Stick/Liste.htm#top"},
    Known{"file://server/share/x", "file://server/share/x"},
    Known{"file:///home/u/%E4.htm", "file:///home/u/%E4.htm"}, Known{"file:", "file:///"}};
} // namespace

class AddressTest : public TestCase {
    Q_OBJECT
private slots:
    void searches_data()
    {
        QTest::addColumn<QString>("engine");
        QTest::addColumn<QString>("address");
        const auto row = [](const char* engine, const char* address) {
            QTest::newRow(engine) << QString::fromLatin1(engine) << QString::fromLatin1(address);
        };
        const char* const query = "?q=%C3%A4%20%2B%26%23%25%3D";
        row("https://duckduckgo.com/", ("https://duckduckgo.com/"_ba + query).constData());
        row("http://www.google.co.uk", ("http://www.google.co.uk/search"_ba + query).constData());
        row("https://google.example.evil.net/x?a=1+2&q=old",
            "https://google.example.evil.net/x?a=1+2&q=%C3%A4%20%2B%26%23%25%3D");
        row("http://notbing.com", ("http://notbing.com"_ba + query).constData());
        row("https://de.wikipedia.org/wiki/Start?uselang=de",
            "https://de.wikipedia.org/w/index.php?uselang=de&search=%C3%A4%20%2B%26%23%25%3D");
        row("https://de.yahoo.com", "https://search.yahoo.com/search?p=%C3%A4%20%2B%26%23%25%3D");
        for (const char* const none : {"", "file:///home/u/a.htm", "javascript:x", "http:///x"})
            row(none, "");
    }
    void searches()
    {
        QFETCH(const QString, engine);
        QFETCH(const QString, address);
        const QUrl found = searchAddress(QUrl(engine), u" ä +&#%= "_s);
        QCOMPARE(found.toString(QUrl::FullyEncoded), address);
        QVERIFY(!searchAddress(QUrl(engine), u" "_s).isValid());
        QVERIFY(!searchAddress(QUrl(engine), QString(2000, u'x')).isValid());
    }

    void resolves()
    {
        for (const auto& [typed, url] : known) {
            const auto found = resolveAddress(QString::fromUtf8(typed), disk(), drives());
            QVERIFY2(found.toEncoded() == url, (typed + (" is " + found.toEncoded())).constData());
        }
    }

    void licenceOfAMovedProgram()
    {
        const auto found = [](const char* typed) {
            return licenceFound(QString::fromLatin1(typed), u"/new"_s, disk());
        };
        for (const char* old : {"/old\\Lizenz.txt", "/media/a b\\lizenz.txt"})
            QCOMPARE(found(old), u"/new\\Lizenz.txt"_s);
        for (const char* other : {"/opt/tessera\\lizenz.txt", "/old/Lizenz.txt", "x\\Lizenz.txt"})
            QCOMPARE(found(other), QString::fromLatin1(other));
    }

    void cannotBeAnAddress()
    {
        for (const char* typed :
             {"", "-", "a b", "http://a b", "foo://a b", "http:", "localhost:99999", "1.2.3.999",
              "http://1.2.3.4.5/x", "E:\\x", "C:foo", "?x", "./x", "file:///a%00b"})
            QVERIFY2(resolveAddress(QString::fromLatin1(typed), disk(), drives()).isEmpty(), typed);
        QCOMPARE(resolveAddress(u"/home"_s + QChar(0), disk(), drives()), QUrl());
    }

    void longTexts()
    {
        const auto length = [](const QString& typed) {
            return resolveAddress(typed, disk(), drives()).toEncoded().size();
        };
        QCOMPARE(length(u"example.org/"_s + QString(100000, u'a')), 100019);
        QCOMPARE(length(u"http://example.org/"_s + QString(1 << 21, u'a')), 0);
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
        QCOMPARE(few.rootOf(u'F') + few.rootOf(u'['), QString());
        for (int i = 0; i < 40; ++i)
            volumes.push_back({u"/v%1"_s.arg(i), u""_s, u"ext4"_s});
        const DriveList many(volumes);
        QCOMPARE(many.entries().size(), 24);
        QCOMPARE(many.rootOf(u'Z'), u"/v20"_s);
    }

    void thisMachine()
    {
        const QString root = path();
        QVERIFY(QDir(root).mkpath(u"Sub"_s));
        const QString file = root + u"/Sub/Ä 100%#.txt"_s;
        writeBytes(file, {});
        const LinuxFileTable files;
        const DriveList mounted = mountedDrives();
        const auto resolved = [&](const QString& typed) {
            return resolveAddress(typed, files, mounted).toLocalFile();
        };
        QCOMPARE(resolved(root + u"\\sub\\ä 100%#.TXT"_s), file);
        QCOMPARE(resolved(root.sliced(1) + u"/SUB/"_s), root + u"/Sub/"_s);
        QCOMPARE(mounted.rootOf(u'C'), u"/"_s);
        RememberedDrives remembered;
        for (int i = 0; i < 2; ++i)
            QCOMPARE(remembered.entries(), mounted.entries());
    }
};

QTEST_APPLESS_MAIN(AddressTest)
#include "AddressTest.moc"
