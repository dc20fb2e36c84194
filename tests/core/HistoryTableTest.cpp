#include "history/HistoryTable.h"
#include "history/HistoryColumns.h"
#include "history/HistoryList.h"

#include <QAbstractItemModelTester>
#include <QMimeData>
#include <QtTest>

#include <algorithm>
#include <numeric>
#include <random>

using namespace Qt::StringLiterals;

namespace {
void add(HistoryCollection& history, const QString& url, const QString& title,
         const QDateTime& when)
{
    auto item = std::make_shared<HistoryItem>();
    item->SetItem(url, title, when);
    history.Add(item);
}

QDateTime at(int day, int month, int hour = 14)
{
    return {QDate(2000, month, day), QTime(hour, 7, 9)};
}
} // namespace

class HistoryTableTest : public QObject {
    Q_OBJECT
private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void showsTextsAndDragsTheAddress()
    {
        HistoryTable table;
        const QAbstractItemModelTester tester(&table);
        HistoryCollection history;
        add(history, u"http://a/"_s, u"<b>A & B</b>\nC"_s, at(5, 3));
        table.fill(history);
        QCOMPARE(table.index(0, 0).data().toString(), u"http://a/"_s);
        QCOMPARE(table.index(0, 1).data().toString(), u"<b>A & B</b>\nC"_s);
        QCOMPARE(table.index(0, 2).data().toString(), u"05.03.2000 - 14:07:09"_s);
        const std::unique_ptr<QMimeData> mime(table.mimeData({table.index(0, 1)}));
        QCOMPARE(mime->formats(), QStringList(u"text/plain"_s));
        QCOMPARE(mime->text(), u"http://a/"_s);
        QCOMPARE(table.supportedDragActions(), Qt::CopyAction);
        table.fill({});
        QCOMPARE(table.rowCount(), 0);
        table.sortBy(HistoryColumn::Date);
        QCOMPARE(table.address(0), QString());
    }

    void sorts_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("order");
        QTest::newRow("address ignores case, stable") << 0 << u"bacd"_s;
        QTest::newRow("title by code") << 1 << u"dcab"_s;
        QTest::newRow("date as text, descending") << 2 << u"cabd"_s;
    }
    void sorts()
    {
        QFETCH(int, column);
        HistoryCollection history;
        add(history, u"http://B"_s, u"a"_s, at(15, 2));
        add(history, u"http://a"_s, u"ä"_s, at(2, 3, 15));
        add(history, u"http://b"_s, u"Z"_s, at(31, 1));
        add(history, u"http://ü"_s, u"B"_s, at(2, 3));
        HistoryTable table;
        table.fill(history);
        table.sortBy(static_cast<HistoryColumn>(column));
        QString order;
        for (int row = 0; row < table.rowCount(); ++row) {
            for (int i = 0; i < history.Count(); ++i) {
                if (history.Item(i + 1)->Url() == table.address(row))
                    order += QChar(static_cast<char16_t>(u'a' + i));
            }
        }
        QTEST(order, "order");
    }

    /// Against the plain way: long common beginnings, prefixes of each other,
    /// characters of every length, many equal texts.
    void sortsAnyTexts()
    {
        std::mt19937 random(7); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same texts every time
        const QString letters = u"aAbB\u00e4\u00c4\u0416\u4e2d\uffee"_s + QChar(0xD83D);
        std::vector<QString> texts;
        for (int i = 0; i < 3000; ++i) {
            QString text = i % 3 == 0 ? u"https://www.example.org/"_s : QString(i % 40, u'x');
            for (auto length = random() % 12; length > 0; --length)
                text += letters[static_cast<qsizetype>(random()) % letters.size()];
            texts.push_back(text);
        }
        const std::vector<QStringView> views(texts.begin(), texts.end());
        for (const auto sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
            RowOrder order(texts.size());
            std::iota(order.rbegin(), order.rend(), std::size_t{0});
            RowOrder plain = order;
            sortByText(order, views, sensitivity);
            std::stable_sort(plain.begin(), plain.end(), [&](std::size_t a, std::size_t b) {
                return texts[a].compare(texts[b], sensitivity) < 0;
            });
            QVERIFY(order == plain);
        }
    }

    void widths_data()
    {
        QTest::addColumn<int>("height");
        QTest::addColumn<int>("rows");
        QTest::addColumn<HistoryWidths>("widths");
        QTest::newRow("40 entries") << 3000 << 41 << HistoryWidths{1860, 1860, 930};
        QTest::newRow("3 entries") << 3000 << 4 << HistoryWidths{1960, 1960, 980};
        QTest::newRow("just fits") << 3000 << 10 << HistoryWidths{1960, 1960, 980};
    }
    void widths()
    {
        QFETCH(int, height);
        QFETCH(int, rows);
        QFETCH(HistoryWidths, widths);
        QVERIFY(fittedWidths(5000, height, 300, rows) == widths);
    }

    void halvesRoundToEven()
    {
        QVERIFY((freshWidths(9) == HistoryWidths{4, 4, 2}));    // 3.5
        QVERIFY((freshWidths(27) == HistoryWidths{10, 10, 6})); // 10.5
    }

    void bordersCountAsHeader()
    {
        QVERIFY(hitsHeader(300, 20, 20, 300));
        QVERIFY(!hitsHeader(301, 20, 20, 300));
        QVERIFY(!hitsHeader(300, 21, 20, 300));
    }
};

QTEST_GUILESS_MAIN(HistoryTableTest)
#include "HistoryTableTest.moc"
