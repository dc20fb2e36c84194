#include "bookmarks/DropRules.h"
#include "base/DroppedAddress.h"

#include <QMimeData>
#include <QUrl>
#include <QtTest>

using namespace Qt::StringLiterals;

class DropRulesTest : public QObject {
    Q_OBJECT
private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void bookmarks_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("title");
        const auto kept = [](const char* text, const char* title) {
            QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(text)
                                << QString::fromUtf8(title);
        };
        kept("", "");
        kept("http://h/docs/", "docs");
        kept("C:\\Daten\\liste.htm", "liste.htm");
        kept(" http://h/x ", "x");   // the blanks stay in the address
        kept("http://h/x\t", "x\t"); // only blanks are trimmed
        kept("a//", "a/");
        kept("http://", "http:/"); // the only slash left is the last character
        kept("a/b\\c", "c");
        kept("a\\b/c", "b/c"); // the backslash has the last word
        kept("FILE:///C:/x", "x");
        // Exact visits; the address that was not visited differs in its case.
        kept("http://visited/page", "first visit");
        kept("http://visited/PAGE", "PAGE");
        kept("http://untitled/page", "");
        kept(" http://visited/page", "page");
        const auto changed = [](const char* text, const char* url, const char* title) {
            QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(url)
                                << QString::fromUtf8(title);
        };
        changed("file:///C:/Daten/liste.htm", "C:\\Daten\\liste.htm", "liste.htm");
        changed("file:///home/u/a%20b.htm", "home\\u\\a%20b.htm", "a%20b.htm");
        changed("file:///a\nfile:///b/c", "a\nb\\c", "c");
        changed("file:///C:/visited.htm", "C:\\visited.htm", "a visited file");
    }
    void bookmarks()
    {
        QFETCH(QString, text);
        HistoryCollection history;
        for (const auto& [url, title] : {std::pair{u"http://visited/page"_s, u"first visit"_s},
                                         {u"http://visited/page"_s, u"second visit"_s},
                                         {u"http://untitled/page"_s, u""_s},
                                         {u"C:\\visited.htm"_s, u"a visited file"_s}}) {
            history.Add(std::make_shared<HistoryItem>());
            history.Item(history.Count())->SetItem(url, title, {});
        }
        const DroppedBookmark asText = droppedBookmark({text, {}}, history);
        QTEST(asText.url, "url");
        QTEST(asText.title, "title");
        const DroppedBookmark asFile = droppedBookmark({u"text"_s, {text, u"/b"_s}}, history);
        QTEST(asFile.url, "url"); // the first file wins
        QTEST(asFile.title, "title");
    }

    void offers_data()
    {
        QTest::addColumn<QString>("plain");
        QTest::addColumn<QString>("list");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("files");
        const QString two = u"file:///d/a%20b\nfile:///d/c"_s;
        QTest::newRow("nothing") << QString() << u""_s << u"-"_s << u""_s;
        QTest::newRow("empty text") << u""_s << u""_s << u""_s << u""_s;
        QTest::newRow("text") << u"x"_s << u""_s << u"x"_s << u""_s;
        QTest::newRow("file text") << u"file:///x"_s << u""_s << u"file:///x"_s << u""_s;
        QTest::newRow("files") << QString() << two << u"-"_s << u"/d/a b|/d/c"_s;
        QTest::newRow("same addresses") << two + u'\n' << two << u"-"_s << u"/d/a b|/d/c"_s;
        QTest::newRow("same paths") << u"/d/a b\r\n/d/c"_s << two << u"-"_s << u"/d/a b|/d/c"_s;
        QTest::newRow("other text") << u"/d/c\nx"_s << two << u"/d/c\nx"_s << u"/d/a b|/d/c"_s;
        QTest::newRow("page") << QString() << u"http://h/ä"_s << u"http://h/%C3%A4"_s << u""_s;
        QTest::newRow("link") << u"http://h/"_s << u"http://h/"_s << u"http://h/"_s << u""_s;
    }
    void offers()
    {
        QFETCH(QString, plain);
        QFETCH(QString, list);
        QMimeData data;
        data.setData(u"image/png"_s, "x"); // pictures do not matter
        if (!plain.isNull())
            data.setText(plain);
        if (!list.isEmpty()) {
            QList<QUrl> urls;
            for (const QString& url : list.split(u'\n'))
                urls.append(QUrl(url));
            data.setUrls(urls);
        }
        const DroppedAddress dropped = droppedAddress(data);
        QTEST(dropped.text.value_or(u"-"_s), "text");
        QTEST(dropped.files.join(u'|'), "files");
    }
};

QTEST_GUILESS_MAIN(DropRulesTest)
#include "DropRulesTest.moc"
