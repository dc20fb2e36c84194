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
        const auto row = [](const char* text, const char* url, const char* title) {
            QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(url)
                                << QString::fromUtf8(title);
        };
        row("", "", "");
        row("http://h/docs/", "http://h/docs/", "docs");
        row(" http://h/x ", " http://h/x ", "x"); // the blanks stay in the address
        row("a\\b/c", "a\\b/c", "b/c");           // the backslash has the last word
        row("http://visited/page", "http://visited/page", "first visit");
        row("http://visited/PAGE", "http://visited/PAGE", "PAGE");
        row("file:///C:/Daten/liste.htm", "C:\\Daten\\liste.htm", "liste.htm");
        row("file:///home/u/a%20b.htm", "home\\u\\a%20b.htm", "a%20b.htm");
    }
    void bookmarks()
    {
        QFETCH(QString, text);
        HistoryCollection history;
        for (const QString& title : {u"first visit"_s, u"second visit"_s}) {
            history.Add(std::make_shared<HistoryItem>());
            history.Item(history.Count())->SetItem(u"http://visited/page"_s, title, {});
        }
        const DroppedBookmark asText = droppedBookmark({text, {}}, history);
        QTEST(asText.url, "url");
        QTEST(asText.title, "title");
        const DroppedBookmark asFile = droppedBookmark({u"text"_s, {text, u"/b"_s}}, history);
        QTEST(asFile.url, "url"); // the first file wins
        QTEST(asFile.title, "title");
    }

    void offers()
    {
        QMimeData data;
        QVERIFY(!droppedAddress(data).text.has_value());
        data.setUrls({QUrl(u"file:///d/a%20b"_s), QUrl(u"file:///d/c"_s)});
        data.setText(u"/d/a b\r\n/d/c"_s); // only repeats the files
        QVERIFY(!droppedAddress(data).text.has_value());
        QCOMPARE(droppedAddress(data).files.join(u'|'), u"/d/a b|/d/c"_s);
        data.setText(u"/d/c\nx"_s);
        QCOMPARE(droppedAddress(data).text.value_or(u"-"_s), u"/d/c\nx"_s);
    }
};

QTEST_GUILESS_MAIN(DropRulesTest)
#include "DropRulesTest.moc"
