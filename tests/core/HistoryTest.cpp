#include "history/HistoryList.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class HistoryItemTest : public QObject {
    Q_OBJECT
private slots:

    void comparesByTheSelector()
    {
        HistoryItem a;
        HistoryItem b;
        a.SetItem(u"B"_s, u"t"_s, at(1));
        b.SetItem(u"a"_s, u"t"_s, at(2));
        HistoryItem by;
        by.SortSel(5); // out of range: by date
        QVERIFY(by.IsLess(a, b) && !by.IsLess(b, a));
        by.SortSel(1);
        QVERIFY(!by.IsLess(a, b) && by.IsEqual(a, b));
        by.SortSel(0);
        QVERIFY(by.IsLess(a, b) && !by.IsLess(b, a)); // by character code: "B" before "a"
    }

    void listRules()
    {
        QCOMPARE(after({}, u"ABCD"_s, 3), u"B2 C3 D4"_s);
        QCOMPARE(after({}, u"ABA"_s, 3), u"A3 B2"_s);
        QCOMPARE(after({}, u"aA"_s, 3), u"a1 A2"_s);
        // With a lowered limit only one goes for each that comes.
        QCOMPARE(after(u"ABCDE"_s, u"FG"_s, 3), u"C3 D4 E5 F1 G2"_s);
        QCOMPARE(after(u"ABC"_s, u"B"_s, 0), u"A1 B1 C3"_s);
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
    /// The list with the numbers of the visits, of which the last ones come under a limit.
    static QString after(const QString& before, const QString& visits, int rows)
    {
        HistoryCollection history;
        for (int i = 0; i < before.size(); ++i)
            addVisit(history, before[i], QString::number(i + 1), at(i + 1), 100);
        for (int i = 0; i < visits.size(); ++i)
            addVisit(history, visits[i], QString::number(i + 1), at(i + 1), rows);
        QStringList all;
        for (const auto& item : history) {
            all << item->Url() + item->Title();
            if (item->UrlDate() != at(item->Title().toInt()))
                all << u"wrong date"_s;
        }
        return all.join(u' ');
    }
    static QDateTime at(int second)
    {
        return QDateTime(QDate(2000, 3, 5), QTime(14, 7)).addSecs(second);
    }
};

QTEST_APPLESS_MAIN(HistoryItemTest)
#include "HistoryTest.moc"
