#include "app/DarkTitles.h"
#include "app/FrameStatusBar.h"
#include "app/frmEinstell.h"
#include "browser/BrowserToolbar.h"
#include "browser/services/DownloadTable.h"
#include "browser/services/frmDownloads.h"
#include "history/HistoryList.h"
#include "history/frmHistory.h"
#include "tests/gui/FakeShell.h"
#include "tests/gui/GuiTest.h"

#include <QAccessible>
#include <QComboBox>
#include <QHeaderView>
#include <QMenu>
#include <QProxyStyle>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace {
QFont sized(int points)
{
    QFont font = QApplication::font();
    font.setPointSize(points);
    return font;
}
} // namespace

/// What the windows make of the desktop's letters and colours.
class AppearanceTest : public TestCase {
    Q_OBJECT
private slots:
    void init()
    {
        TestCase::init();
        m_usual = QApplication::font();
        QApplication::setFont(sized(16));
    }
    void cleanup() { QApplication::setFont(m_usual); }

    void datesAreWhole()
    {
        FakeShell shell;
        addVisit(shell.history, u"http://a"_s, u"t"_s, QDate(2000, 1, 1).startOfDay(), 3);
        frmHistory window(shell, nullptr);
        window.setAttribute(Qt::WA_DeleteOnClose, false);
        window.resize(720, 300);
        window.show();
        const auto* grid = window.findChild<QTableView*>(u"Grid"_s);
        const QModelIndex date = grid->model()->index(0, 2);
        QStyleOptionViewItem option;
        option.initFrom(grid);
        option.rect = grid->visualRect(date);
        QVERIFY(option.rect.width() > 100);
        const int wanted = grid->itemDelegate()->sizeHint(option, date).width();
        QVERIFY2(wanted <= option.rect.width(), qPrintable(QString::number(wanted)));
    }

    void headersOfTheDownloadsAreWhole()
    {
        FakeShell shell;
        DownloadTable table;
        frmDownloads window(shell, nullptr, table, [](const QUrl&) { return true; });
        window.setAttribute(Qt::WA_DeleteOnClose, false);
        window.show();
        const QHeaderView* header = window.findChild<QTableView*>()->horizontalHeader();
        for (int i = 0; i < header->count(); ++i)
            QVERIFY2(header->sectionSize(i) >= header->sectionSizeHint(i),
                     qPrintable(QString::number(i)));
    }

    void buttonsGrowWithTheLetters()
    {
        BrowserToolbar toolbar(nullptr);
        QVERIFY(toolbar.iconSize().height() >= 30);
        QApplication::setFont(sized(9));
        QCoreApplication::processEvents();
        QCOMPARE(toolbar.iconSize(), QSize(20, 20));
    }

    void whatHasNoLettersHasAName()
    {
        const BrowserToolbar toolbar(nullptr);
        const FrameStatusBar status(nullptr);
        const auto nameOf = [](QWidget* widget) {
            return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
        };
        QCOMPARE(nameOf(toolbar.findChild<QMenu*>(u"Drives"_s)), u"Laufwerke"_s);
        QCOMPARE(nameOf(toolbar.findChild<QWidget*>(u"qt_toolbar_ext_button"_s)),
                 u"Weitere Schaltflächen"_s);
        QCOMPARE(nameOf(const_cast<FrameStatusBar*>(&status)), u"Status-Zeile"_s);
    }

    void theListOpensAtTheStoredNumber()
    {
        FakeShell shell;
        for (const auto& [rows, place] : {std::pair<qint16, int>{100, 2}, {7, -1}}) {
            shell.pref.HistoryRows(rows);
            const frmEinstell dialog(shell, nullptr);
            const auto* combo = dialog.findChild<QComboBox*>(u"Combo1"_s);
            QCOMPARE(combo->currentIndex(), place);
            QCOMPARE(combo->currentText(), QString::number(rows));
        }
    }

    /// Also where the desktop has put a style of its own around the toolkit's.
    void titleButtonsAreLegibleInTheDark()
    {
        QApplication::setStyle(new QProxyStyle(u"Fusion"_s));
        const QPalette usual = QApplication::palette();
        QApplication::setPalette(QPalette(QColor(40, 40, 40)));
        {
            QWidget frame;
            const DarkTitles::Watch watch(&frame);
            const QIcon close = QApplication::style()->standardIcon(QStyle::SP_TitleBarCloseButton);
            QVERIFY(close.pixmap(16).toImage().pixelColor(8, 8).lightness() > 200);
            QApplication::setStyle(u"Fusion"_s); // the desktop changes its mind
            QCoreApplication::processEvents();
            QVERIFY(dynamic_cast<DarkTitles*>(QApplication::style()) != nullptr);
        }
        QApplication::setPalette(usual);
    }

private:
    QFont m_usual;
};

GUI_TEST_MAIN(AppearanceTest)
#include "AppearanceTest.moc"
