#include "history/HistoryTable.h"
#include "tests/TestCase.h"

#include <QAbstractItemModelTester>
#include <QMimeData>

using namespace Qt::StringLiterals;

namespace {
void add(HistoryCollection& history, const QString& url, const QString& title, const QDate& day)
{
    addVisit(history, url, title, QDateTime(day, QTime(14, 7, 9)), 100);
}
} // namespace

class HistoryTest : public TestCase {
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
        QVERIFY_THROWS_EXCEPTION(NotFoundError, after({}, u"A"_s, -3)); // no history at all
    }

    void wantsWhatWasVisitedMostAndLast()
    {
        HistoryCollection history;
        for (const auto& [url, day] : {std::pair{u"old"_s, 1},
                                       {u"often"_s, 2},
                                       {u"b"_s, 3},
                                       {u"often"_s, 4},
                                       {u"b"_s, 5},
                                       {u"last"_s, 9}})
            addVisit(history, url, {}, QDateTime(QDate(2000, 1, day), QTime(0, 0)), 9);
        QStringList wanted;
        for (const auto& item : mostWanted(history))
            wanted << item->Url();
        QCOMPARE(wanted.join(u' '), u"b often last old"_s);
    }

    void showsTextsAndDragsTheAddress()
    {
        HistoryTable table;
        const QAbstractItemModelTester tester(&table);
        HistoryCollection history;
        add(history, u"http://a/"_s, u"<b>A & B</b>\nC"_s, {2000, 3, 5});
        table.fill(history);
        QCOMPARE(table.index(0, 1).data().toString(), u"<b>A & B</b>\nC"_s);
        QCOMPARE(table.index(0, 2).data().toString(), u"05.03.2000 - 14:07:09"_s);
        const std::unique_ptr<QMimeData> mime(table.mimeData({table.index(0, 1)}));
        QCOMPARE(mime->formats(), QStringList(u"text/plain"_s));
        QCOMPARE(mime->text(), u"http://a/"_s);
    }

    void sorts()
    {
        HistoryCollection history;
        add(history, u"http://B"_s, u"a"_s, {2000, 2, 15});
        add(history, u"http://a"_s, u"ä"_s, {2000, 3, 2});
        add(history, u"http://b"_s, u"Z"_s, {2000, 1, 31});
        add(history, u"http://ü"_s, u"B"_s, {2000, 3, 1});
        HistoryTable table;
        table.fill(history);
        const auto sorted = [&table](HistoryColumn column) {
            table.sortBy(column);
            QString titles;
            for (int row = 0; row < table.rowCount(); ++row)
                titles += table.index(row, 1).data().toString();
            return titles;
        };
        QCOMPARE(sorted(static_cast<HistoryColumn>(0)), u"äaZB"_s); // ignores case, stable
        QCOMPARE(sorted(static_cast<HistoryColumn>(1)), u"BZaä"_s); // by code
        table.fill(history);
        QCOMPARE(sorted(HistoryColumn::Date), u"ZaäB"_s); // as text, descending
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

QTEST_GUILESS_MAIN(HistoryTest)
#include "HistoryTest.moc"
