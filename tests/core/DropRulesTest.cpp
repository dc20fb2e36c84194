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

    void bookmarks()
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
        check(u"file:///home/u/a%20b.htm"_s, u"home\\u\\a%20b.htm"_s, u"a%20b.htm"_s);
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
