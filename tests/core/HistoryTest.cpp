#include "history/HistoryList.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class HistoryItemTest : public QObject {
    Q_OBJECT
private slots:
    void selectorIsKeptInRange()
    {
        HistoryItem item;
        QCOMPARE(int{item.SortSel()}, 2);
        for (const auto& [set, get] : {std::pair{0, 0}, {5, 2}, {1, 1}, {-1, 2}}) {
            item.SortSel(static_cast<qint16>(set));
            QCOMPARE(int{item.SortSel()}, get);
        }
    }

    void comparesByTheSelector()
    {
        HistoryItem a;
        HistoryItem b;
        a.SetItem(u"B"_s, u"t"_s, at(1));
        b.SetItem(u"a"_s, u"t"_s, at(2));
        HistoryItem by;
        QVERIFY(by.IsLess(a, b) && !by.IsLess(b, a) && !by.IsEqual(a, b));
        by.SortSel(1);
        QVERIFY(!by.IsLess(a, b) && by.IsEqual(a, b));
        by.SortSel(0);
        QVERIFY(by.IsLess(a, b) && !by.IsLess(b, a)); // by character code: "B" before "a"
    }

    void listRules_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<int>("rows");
        QTest::addColumn<QString>("visits");
        QTest::addColumn<QString>("after");
        QTest::newRow("oldest goes") << u""_s << 3 << u"ABCD"_s << u"BCD"_s;
        QTest::newRow("keeps its place") << u""_s << 3 << u"ABA"_s << u"AB"_s;
        QTest::newRow("one") << u""_s << 1 << u"ABC"_s << u"C"_s;
        QTest::newRow("lowered limit") << u"ABCDEFGHIJ"_s << 3 << u"KL"_s << u"CDEFGHIJKL"_s;
        QTest::newRow("a re-visit ignores the limit") << u"ABC"_s << 0 << u"B"_s << u"ABC"_s;
        QTest::newRow("case counts") << u""_s << 5 << u"aA"_s << u"aA"_s;
    }
    void listRules()
    {
        QFETCH(QString, before);
        QFETCH(int, rows);
        QFETCH(QString, visits);
        HistoryCollection history;
        for (const QChar c : before)
            addVisit(history, c, u"old"_s, at(0), 100);
        int second = 0;
        for (const QChar c : visits) {
            ++second;
            addVisit(history, c, QString::number(second), at(second), rows);
        }
        QString urls;
        for (const auto& item : history)
            urls += item->Url();
        QTEST(urls, "after");
        const auto last = std::find_if(history.begin(), history.end(), [&](const auto& item) {
            return item->Url() == visits.back();
        });
        QCOMPARE((*last)->Title(), QString::number(second));
        QCOMPARE((*last)->UrlDate(), at(second));
    }

    void noLimitMeansNoHistory()
    {
        for (const int rows : {0, -3}) {
            HistoryCollection history;
            QVERIFY_THROWS_EXCEPTION(NotFoundError, addVisit(history, u"A"_s, u"t"_s, at(1), rows));
            QCOMPARE(history.Count(), 0);
        }
    }

private:
    static QDateTime at(int second)
    {
        return QDateTime(QDate(2000, 3, 5), QTime(14, 7)).addSecs(second);
    }
};

QTEST_APPLESS_MAIN(HistoryItemTest)
#include "HistoryTest.moc"
