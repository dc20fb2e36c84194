#include "history/frmHistory.h"
#include "tests/gui/FakeShell.h"
#include "tests/gui/GuiTest.h"

#include "base/Twips.h"

#include <QAction>
#include <QHeaderView>
#include <QMenu>
#include <QPointer>
#include <QTableView>

using namespace Qt::StringLiterals;

class HistoryWindowTest : public QObject {
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }

    void opensSortedByDateWithTheFirstRowSelected()
    {
        open(3);
        QVERIFY(m_shell->isOpenHistory);
        QCOMPARE(m_window->windowTitle(), u"Historie"_s);
        QCOMPARE(shown(), u"cba"_s);
        QCOMPARE(m_grid->currentIndex().row(), 0);
        QCOMPARE(m_grid->selectionModel()->selectedRows().size(), 1);
        // Sorted, the header is current: Enter closes and hands nothing over.
        trigger(u"mn_SortAdr"_s);
        QCOMPARE(shown(), u"abc"_s);
        m_shell->historyUrl = u"old"_s;
        QTest::keyClick(m_grid, Qt::Key_Return);
        QVERIFY(isClosed());
        QCOMPARE(m_shell->historyUrl, u"old"_s);
    }

    void keys_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<QString>("url");
        QTest::newRow("Enter is deferred") << Qt::Key_Return << u"http://b"_s;
        QTest::newRow("key pad") << Qt::Key_Enter << u"http://b"_s;
        QTest::newRow("Escape") << Qt::Key_Escape << QString();
    }
    void keys()
    {
        QFETCH(Qt::Key, key);
        open(3);
        QTest::keyClick(m_grid, Qt::Key_Down);
        QTest::keyClick(m_grid, key);
        QVERIFY(isClosed());
        QTEST(m_shell->historyUrl, "url");
        QVERIFY(m_shell->visited.isEmpty());
    }

    void doubleClickOpensRowsOnly()
    {
        open(3);
        QWidget* header = m_grid->horizontalHeader()->viewport();
        const QPoint inRow2 = m_grid->visualRect(m_grid->model()->index(1, 1)).center();
        // The press of the double-click went to the header.
        doubleClick(header, QPoint(2, 2));
        m_grid->selectRow(0);
        QTest::mouseDClick(m_grid->viewport(), Qt::LeftButton, {}, inRow2);
        QVERIFY(!isClosed());
        doubleClick(m_grid->viewport(), QPoint(5, m_grid->viewport()->height() - 5));
        QVERIFY(!isClosed());
        doubleClick(m_grid->viewport(), inRow2);
        QVERIFY(isClosed());
        QCOMPARE(m_shell->visited, QStringList(u"http://b"_s));
        QVERIFY(m_shell->historyUrl.isEmpty());
    }

    void headerPresses_data()
    {
        QTest::addColumn<int>("button");
        QTest::addColumn<int>("column"); // 3: on the right border
        QTest::addColumn<QString>("order");
        QTest::newRow("left, address") << int(Qt::LeftButton) << 0 << u"abc"_s;
        QTest::newRow("middle, title") << int(Qt::MiddleButton) << 1 << u"acb"_s;
        QTest::newRow("right border") << int(Qt::LeftButton) << 3 << u"cba"_s;
        QTest::newRow("behind it") << int(Qt::LeftButton) << 4 << u"abc"_s;
    }
    void headerPresses()
    {
        QFETCH(int, button);
        QFETCH(int, column);
        open(3);
        if (column >= 3)
            trigger(u"mn_SortAdr"_s);
        const QHeaderView* header = m_grid->horizontalHeader();
        const int x =
            column < 3 ? header->sectionPosition(column) + 3 : header->length() + column - 3;
        QTest::mousePress(header->viewport(), static_cast<Qt::MouseButton>(button), {},
                          QPoint(x, 0));
        QTEST(shown(), "order");
    }

    void rightButtonShowsTheMenu()
    {
        open(1);
        auto* menu = m_window->findChild<QMenu*>(u"mn_Historie"_s);
        QCOMPARE(menu->title(), u"&Tabelle"_s);
        for (QWidget* place : {m_grid->viewport(), m_grid->horizontalHeader()->viewport()}) {
            QTest::mousePress(place, Qt::RightButton, {}, QPoint(9, 9));
            QVERIFY(menu->isVisible());
            menu->close();
        }
    }

    void emptyHistory()
    {
        open(0);
        trigger(u"mn_SortTitel"_s);
        trigger(u"mn_Aktualisieren"_s);
        QTest::mouseDClick(m_grid->viewport(), Qt::LeftButton, {}, QPoint(20, 20));
        QVERIFY(!isClosed());
        QTest::keyClick(m_grid, Qt::Key_Return);
        QVERIFY(isClosed());
        QVERIFY(m_shell->historyUrl.isEmpty() && m_shell->visited.isEmpty());
    }

    void followsTheSizeAndRefillsOnDemand()
    {
        open(2);
        m_window->resize(600, 300);
        QVERIFY(QTest::qWaitFor([this] { return m_grid->width() == 600; }));
        const int fitting = m_grid->height() / m_grid->horizontalHeader()->height();
        while (m_shell->history.Count() < fitting - 1)
            addVisit(u"http://x"_s, u"t\n"_s.repeated(5000));
        trigger(u"mn_Aktualisieren"_s);
        QCOMPARE(m_grid->model()->rowCount(), fitting - 1);
        // Refilling counts the spare row, a later resize does not.
        QCOMPARE(widths(), expectedWidths(fitting + 1));
        m_window->resize(601, 300);
        QVERIFY(QTest::qWaitFor([&] { return widths() == expectedWidths(fitting); }));
    }

    void cleanup()
    {
        if (m_window)
            m_window->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        m_shell.reset();
    }

private:
    /// Up to three entries: addresses a b c, titles t1 t3 t2, one day after the other.
    void open(int entries)
    {
        m_shell = std::make_unique<FakeShell>();
        const QStringList titles{u"t1"_s, u"t3"_s, u"t2"_s};
        for (int i = 0; i < entries; ++i)
            addVisit(u"http://"_s + QChar(static_cast<char16_t>(u'a' + i)), titles[i]);
        m_window = new frmHistory(*m_shell, nullptr);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window));
        m_grid = m_window->findChild<QTableView*>(u"Grid"_s);
    }
    void addVisit(const QString& url, const QString& title)
    {
        auto item = std::make_shared<HistoryItem>();
        const QDate start(2000, 1, 1);
        item->SetItem(url, title, start.addDays(m_shell->history.Count()).startOfDay());
        m_shell->history.Add(item);
    }
    void trigger(const QString& name) { m_window->findChild<QAction*>(name)->trigger(); }
    bool isClosed()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return !m_window && !m_shell->isOpenHistory;
    }
    static void doubleClick(QWidget* widget, QPoint at)
    {
        QTest::mouseClick(widget, Qt::LeftButton, {}, at);
        QTest::mouseDClick(widget, Qt::LeftButton, {}, at);
    }
    QString shown() const
    {
        QString result;
        for (int row = 0; row < m_grid->model()->rowCount(); ++row)
            result += m_grid->model()->index(row, 0).data().toString().back();
        return result;
    }
    QList<int> widths() const
    {
        return {m_grid->columnWidth(0), m_grid->columnWidth(1), m_grid->columnWidth(2)};
    }
    QList<int> expectedWidths(int rows) const
    {
        const auto twips = fittedWidths(toTwips(m_grid->width()), toTwips(m_grid->height()),
                                        toTwips(m_grid->horizontalHeader()->height()), rows);
        return {toPixels(twips[0]), toPixels(twips[1]), toPixels(twips[2])};
    }

    std::unique_ptr<FakeShell> m_shell;
    QPointer<frmHistory> m_window;
    QTableView* m_grid = nullptr;
};

GUI_TEST_MAIN(HistoryWindowTest)
#include "HistoryWindowTest.moc"
