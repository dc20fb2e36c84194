#include "history/frmHistory.h"
#include "tests/gui/FakeShell.h"
#include "tests/gui/GuiTest.h"

#include <QHeaderView>
#include <QTableView>

using namespace Qt::StringLiterals;

class HistoryWindowTest : public WindowTest {
    Q_OBJECT
private slots:
    /// What Enter marks is opened later; a sorting header takes the Enter itself.
    void sortsAndMarks()
    {
        for (const auto& [isSorting, key, marked] :
             {std::tuple{false, Qt::Key_Return, u"http://a"_s},
              {false, Qt::Key_Escape, u""_s},
              {true, Qt::Key_Return, u""_s}}) {
            FakeShell shell;
            for (const auto& [url, day] : {std::pair{u"http://b"_s, QDate(2000, 1, 31)},
                                           {u"http://a"_s, QDate(2000, 2, 15)},
                                           {u"http://c"_s, QDate(2000, 3, 1)}})
                addVisit(shell.history, url, u"t"_s, day.startOfDay(), 3);
            const QPointer<frmHistory> window = new frmHistory(shell, shell.history, nullptr);
            show(*window);
            auto* grid = find<QTableView>(u"Grid"_s);
            const auto first = [grid] { return grid->model()->index(0, 0).data().toString(); };
            QCOMPARE(first(), u"http://b"_s); // dates as texts, downwards
            QCOMPARE(grid->currentIndex().row(), 0);
            if (isSorting) {
                QTest::mousePress(grid->horizontalHeader()->viewport(), Qt::LeftButton, {}, {3, 0});
                QCOMPARE(first(), u"http://a"_s);
            } else {
                QTest::keyClick(grid, Qt::Key_Down);
            }
            QTest::keyClick(grid, key);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(!window && !shell.isOpenHistory);
            QCOMPARE(shell.historyUrl, marked);
            QVERIFY(shell.visited.isEmpty());
        }
    }
};

QTEST_MAIN(HistoryWindowTest)
#include "HistoryWindowTest.moc"
