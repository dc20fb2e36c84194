#include "history/frmHistory.h"
#include "tests/gui/FakeShell.h"
#include "tests/gui/GuiTest.h"

#include <QHeaderView>
#include <QPointer>
#include <QTableView>

using namespace Qt::StringLiterals;

class HistoryWindowTest : public TestCase {
    Q_OBJECT
private slots:
    void opensSortedByDateWithTheFirstRowSelected()
    {
        open();
        QCOMPARE(shown(), u"cba"_s);
        QCOMPARE(m_grid->currentIndex().row(), 0);
        // Sorted, the header is current: Enter closes and hands nothing over.
        QTest::mousePress(m_grid->horizontalHeader()->viewport(), Qt::LeftButton, {}, QPoint(3, 0));
        QCOMPARE(shown(), u"abc"_s);
        m_shell->historyUrl = u"old"_s;
        QTest::keyClick(m_grid, Qt::Key_Return);
        QVERIFY(isClosed());
        QCOMPARE(m_shell->historyUrl, u"old"_s);
    }

    void keys()
    {
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
            open();
            QTest::keyClick(m_grid, Qt::Key_Down);
            QTest::keyClick(m_grid, key);
            QVERIFY(isClosed());
            QCOMPARE(m_shell->historyUrl, key == Qt::Key_Return ? u"http://b"_s : QString());
            QVERIFY(m_shell->visited.isEmpty()); // Enter is deferred
        }
    }

    void doubleClickOpensRowsOnly()
    {
        open();
        QWidget* header = m_grid->horizontalHeader()->viewport();
        const QPoint inRow2 = m_grid->visualRect(m_grid->model()->index(1, 1)).center();
        // The press of the double-click went to the header.
        doubleClick(header, QPoint(2, 2));
        m_grid->selectRow(0);
        QTest::mouseDClick(m_grid->viewport(), Qt::LeftButton, {}, inRow2);
        QVERIFY(!isClosed());
        doubleClick(m_grid->viewport(), inRow2);
        QVERIFY(isClosed());
        QCOMPARE(m_shell->visited, QStringList(u"http://b"_s));
        QVERIFY(m_shell->historyUrl.isEmpty());
    }

    void cleanup()
    {
        if (m_window)
            m_window->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        m_shell.reset();
    }

private:
    /// Three entries: addresses a b c, titles t1 t3 t2, one day after the other.
    void open()
    {
        m_shell = std::make_unique<FakeShell>();
        const QStringList titles{u"t1"_s, u"t3"_s, u"t2"_s};
        for (int i = 0; i < 3; ++i)
            addVisit(m_shell->history, u"http://"_s + QChar(static_cast<char16_t>(u'a' + i)),
                     titles[i], QDate(2000, 1, 1 + i).startOfDay(), 3);
        m_window = new frmHistory(*m_shell, nullptr);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window));
        m_grid = m_window->findChild<QTableView*>(u"Grid"_s);
    }
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

    std::unique_ptr<FakeShell> m_shell;
    QPointer<frmHistory> m_window;
    QTableView* m_grid = nullptr;
};

GUI_TEST_MAIN(HistoryWindowTest)
#include "HistoryWindowTest.moc"
