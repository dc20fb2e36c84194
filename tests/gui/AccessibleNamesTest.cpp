#include "app/frmEinstell.h"
#include "base/QuestionDialogs.h"
#include "bookmarks/frmBook.h"
#include "history/frmHistory.h"
#include "pages/downloads/DownloadTable.h"
#include "pages/downloads/frmDownloads.h"
#include "pages/viewing/FindBar.h"
#include "pages/viewing/frmBrowserData.h"
#include "tests/gui/FakeShell.h"
#include "tests/gui/FrameFixture.h"

#include <QAccessible>

using namespace Qt::StringLiterals;

/// Whoever cannot see a window is told what each of its controls is for.
class AccessibleNamesTest : public TestCase {
    Q_OBJECT
private slots:
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
};

QTEST_MAIN(AccessibleNamesTest)
#include "AccessibleNamesTest.moc"
