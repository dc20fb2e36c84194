#include "app/DarkTitles.h"
#include "app/frmEinstell.h"
#include "base/QuestionDialogs.h"
#include "bookmarks/frmBook.h"
#include "history/HistoryList.h"
#include "history/frmHistory.h"
#include "pages/downloads/DownloadTable.h"
#include "pages/downloads/frmDownloads.h"
#include "pages/viewing/FindBar.h"
#include "pages/viewing/frmBrowserData.h"
#include "tests/gui/FakeShell.h"
#include "tests/gui/FrameFixture.h"

#include <QAccessible>
#include <QHeaderView>
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

/// What the windows make of the desktop's letters and colours, and tell its
/// assistive tools.
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

    void columnsAreWhole()
    {
        FakeShell shell;
        DownloadTable table;
        frmDownloads downloads(shell, nullptr, table, [](const QUrl&) { return true; });
        const QHeaderView* header = shownGrid(downloads)->horizontalHeader();
        for (int i = 0; i < header->count(); ++i)
            QVERIFY2(header->sectionSize(i) >= header->sectionSizeHint(i),
                     qPrintable(QString::number(i)));

        addVisit(shell.history, u"http://a"_s, u"t"_s, QDate(2000, 1, 1).startOfDay(), 3);
        frmHistory history(shell, shell.history, nullptr);
        history.resize(720, 300);
        const QTableView* grid = shownGrid(history);
        const QModelIndex date = grid->model()->index(0, 2);
        QStyleOptionViewItem option;
        option.initFrom(grid);
        option.rect = grid->visualRect(date);
        QVERIFY(option.rect.width() > 100);
        QVERIFY(option.rect.width() >= grid->itemDelegate()->sizeHint(option, date).width());
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

    /// Whoever cannot see a window is told what each of its controls is for.
    void everyControlHasAName()
    {
        const StartedFrame frame(u"a"_s);
        FakeShell shell;
        DownloadTable downloads;
        const frmEinstell preferences(shell, nullptr);
        const frmHistory history(shell, shell.history, nullptr);
        const frmBook archive(shell, shell.history, nullptr);
        const frmDownloads list(shell, nullptr, downloads, [](const QUrl&) { return true; });
        const frmBrowserData data(nullptr);
        const LogInDialog logIn({}, nullptr);
        QWidget page;
        const FindBar find(&page);
        QStringList nameless;
        const QWidgetList controls = QApplication::allWidgets();
        for (QWidget* control : controls) {
            const bool isNamedElsewhere = control->isWindow() ||
                                          control->inherits("QMdiSubWindow") ||
                                          control->inherits("QComboBoxListView");
            // Not reached by Tab, for all that without letters.
            const bool isDrawn = control->inherits("QToolBarExtension") ||
                                 control->inherits("QStatusBar") ||
                                 control->objectName() == u"Drives"_s;
            const bool isReached =
                (control->focusPolicy() & Qt::TabFocus) != 0 && !isNamedElsewhere;
            if (!isDrawn && !isReached)
                continue;
            QAccessibleInterface* face = QAccessible::queryAccessibleInterface(control);
            if (face != nullptr && face->text(QAccessible::Name).isEmpty())
                nameless << control->objectName() + u' ' +
                                QString::fromLatin1(control->metaObject()->className());
        }
        QVERIFY(controls.size() > 100);
        QCOMPARE(nameless.join(u", "_s), QString());
    }

private:
    static const QTableView* shownGrid(QWidget& window)
    {
        window.setAttribute(Qt::WA_DeleteOnClose, false);
        window.show();
        return window.findChild<QTableView*>();
    }
    QFont m_usual;
};

QTEST_MAIN(AppearanceTest)
#include "AppearanceTest.moc"
