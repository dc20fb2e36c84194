#include "base/DroppedAddress.h"
#include "bookmarks/DroppedBookmark.h"
#include "bookmarks/FolderNames.h"
#include "bookmarks/StoredText.h"
#include "tests/TestCase.h"

#include <QMimeData>
#include <QUrl>

using namespace Qt::StringLiterals;

class ArchiveRulesTest : public TestCase {
    Q_OBJECT
private slots:
    void names()
    {
        QCOMPARE(cleanDirName(u"a\r\nb\u2028c\nd"_s), u"a b c d"_s);
        const auto isFree = [](const QString& its) { return its != u"Archiv"; };
        const auto check = [&](const QString& name) {
            return checkDirName(u"Alt"_s, name, isFree);
        };
        QVERIFY(check(u"Alt"_s) == DirNameCheck::Unchanged);
        QVERIFY(check(QString()) == DirNameCheck::Empty);
        QVERIFY(check(u"ARCHIV"_s) == DirNameCheck::Accepted);
    }

    void droppedTexts()
    {
        HistoryCollection history;
        for (const QString& title : {u"first visit"_s, u"second visit"_s}) {
            history.Add(std::make_shared<HistoryItem>());
            history.Item(history.Count())->SetItem(u"http://visited/page"_s, title, {});
        }
        const auto check = [&](const QString& text, const QString& url, const QString& title) {
            const DroppedBookmark asText = droppedBookmark({text, {}}, history);
            QCOMPARE(asText.url + u'|' + asText.title, url + u'|' + title);
            const DroppedBookmark asFile = droppedBookmark({u"text"_s, {text, u"/b"_s}}, history);
            QCOMPARE(asFile.url + u'|' + asFile.title, url + u'|' + title); // the first file wins
        };
        check({}, {}, {});
        check(u"http://h/docs/"_s, u"http://h/docs/"_s, u"docs"_s);
        check(u" http://h/x "_s, u" http://h/x "_s, u"x"_s); // the blanks stay in the address
        check(u"a\\b/c"_s, u"a\\b/c"_s, u"b/c"_s);           // the backslash has the last word
        check(u"http://visited/page"_s, u"http://visited/page"_s, u"first visit"_s);
        check(u"http://visited/PAGE"_s, u"http://visited/PAGE"_s, u"PAGE"_s);
        check(u"file:///C:/Daten/liste.htm"_s, u"C:\\Daten\\liste.htm"_s, u"liste.htm"_s);
        check(u"file:///C:/a file:///b"_s, u"C:\\a b"_s, u"a b"_s);
        check(u"file:///home/u/a%20b.htm"_s, u"/home/u/a b.htm"_s, u"a b.htm"_s);
        check(u"file:///home/u/c%23.htm#top"_s, u"/home/u/c#.htm#top"_s, u"c#.htm#top"_s);
        check(u"file:///home/100%.htm"_s, u"/home/100%.htm"_s, u"100%.htm"_s);
        check(u"file:///home/%E4"_s, u"file:///home/%E4"_s, u"%E4"_s);
    }

    void losses_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("losses");
        const auto row = [](const char* name, const QString& text, const QString& losses) {
            QTest::addRow("%s", name) << text << losses;
        };
        row("what the code page has", u"Öl 5 € „?“"_s, {});
        row("as long as the field", u"ä€123678ij"_s, {});
        row("longer", u"ä€1236789ij"_s, u"Wird nach 10 Zeichen abgeschnitten (es sind 11)."_s);
        row("blanks at the end", u"1234567890  "_s, {});
        row("a line break", u"12345\r\n7890"_s,
            u"Wird nach 10 Zeichen abgeschnitten (es sind 11, ein Zeilenumbruch zählt zwei)."_s);
        row("others", u"Жa\u200bЖ\U0001F600"_s, u"Wird zu „?“: Ж U+200B \U0001F600"_s);
        row("pairs count one", QString::fromUcs4(U"\U0001F600").repeated(10),
            u"Wird zu „?“: \U0001F600"_s);
    }
    void losses()
    {
        QFETCH(QString, text);
        QTEST(lossesOf(text, 10), "losses");
    }

    void droppedOffers_data()
    {
        QTest::addColumn<QByteArrayList>("offered"); // list, text, HTML; null: not offered
        QTest::addColumn<QString>("address");        // text, then files
        const auto row = [](const char* name, const QByteArrayList& offered, const char* address) {
            QTest::newRow(name) << offered << QString::fromUtf8(address);
        };
        const QByteArray none;
        row("nothing", {none, none, none}, "- ");
        row("text", {none, "www.a.de/b", none}, "www.a.de/b ");
        row("empty text beside a file", {"file:///a", "", none}, " /a");
        row("file manager", {"file:///d/a%20b\r\nfile:///d/c", "/d/a b\r\n/d/c", none},
            "- /d/a b|/d/c");
        row("file and its address", {"file:///d/a%20b", "file:///d/a%20b", none}, "- /d/a b");
        row("file and a text of its own", {"file:///d/c", "/d/c\nx", none}, "/d/c\nx /d/c");
        row("names that are no text", {"file:///d/%E4\r\nfile:///C:/x", none, none},
            "- file:///d/%E4|file:///C:/x");
        row("link to a file",
            {"file:///d/c", "Datei", "<a class=\"x\" href=\"file:///d/c\">Datei</a>"}, "- /d/c");
        row("link into a file", {"file:///d/c#e", "Datei", "<a href=\"file:///d/c#e\">Datei</a>"},
            "file:///d/c#e ");
        row("addresses", {"#comment\r\nhttp://h/1\r\nhttp://h/2", "http://h/1\nhttp://h/2", none},
            "http://h/1 ");
        row("address and file", {"http://h/1\r\nfile:///d/c", none, none}, "- /d/c");
        row("image",
            {"file:///tmp/x/b.png", "Alt", "<img alt=\" src=\" src=\"http://h/b?a&amp;c\">"},
            "http://h/b?a&c ");
        row("local image", {"file:///tmp/x/b.png", "", "<meta x><img src=\"file:///d/b.png\">"},
            "- /d/b.png");
        row("image by its sizes",
            {"file:///tmp/x/b", none, "<img srcset=\"http://h/b 1x, http://h/c\">"}, "http://h/b ");
        row("image of no address", {"file:///tmp/x/b", "Alt", "<img alt=\"Alt\">"}, "- ");
        row("selection", {none, "a b", "<b>a <a href=\"http://h/\">b</a></b>"}, "a b ");
    }
    void droppedOffers()
    {
        QFETCH(QByteArrayList, offered);
        QMimeData data;
        for (const auto& [format, bytes] : {std::pair{u"text/uri-list"_s, offered[0]},
                                            {u"text/plain"_s, offered[1]},
                                            {u"text/html"_s, offered[2]}})
            if (!bytes.isNull())
                data.setData(format, bytes);
        const DroppedAddress dropped = droppedAddress(data);
        QTEST(dropped.text.value_or(u"-"_s) + u' ' + dropped.files.join(u'|'), "address");
    }
};

QTEST_GUILESS_MAIN(ArchiveRulesTest)
#include "ArchiveRulesTest.moc"
