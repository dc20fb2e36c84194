#include "app/frmEinstell.h"
#include "bookmarks/frmBook.h"
#include "browser/services/DownloadTable.h"
#include "browser/services/FindBar.h"
#include "browser/services/LogInDialog.h"
#include "browser/services/frmBrowserData.h"
#include "browser/services/frmDownloads.h"
#include "history/frmHistory.h"
#include "tests/gui/FakeShell.h"
#include "tests/gui/FrameFixture.h"

#include <QAccessible>

using namespace Qt::StringLiterals;

/// Whoever cannot see a window is told what each of its controls is for.
class AccessibleNamesTest : public QObject {
    Q_OBJECT
private slots:
    void everyControlHasAName()
    {
        FrameFixture f;
        f.start.Main(u"a"_s);
        expectNames(f.frame());
        FakeShell shell;
        DownloadTable downloads;
        frmEinstell preferences(shell, nullptr);
        frmHistory history(shell, nullptr);
        frmBook archive(shell, nullptr);
        frmDownloads list(shell, nullptr, downloads, [](const QUrl&) { return true; });
        frmBrowserData data(nullptr);
        LogInDialog logIn({}, nullptr);
        QWidget page;
        const FindBar find(&page);
        for (QWidget* window : std::initializer_list<QWidget*>{&preferences, &history, &archive,
                                                               &list, &data, &logIn, &page})
            expectNames(*window);
    }

private:
    static void expectNames(QWidget& window)
    {
        QStringList nameless;
        const QList<QWidget*> controls = window.findChildren<QWidget*>();
        for (QWidget* control : controls) {
            const bool isOwnWindow = control->isWindow() || control->window() != window.window() ||
                                     control->inherits("QMdiSubWindow"); // its caption names it
            if ((control->focusPolicy() & Qt::TabFocus) == 0 || isOwnWindow)
                continue;
            QAccessibleInterface* face = QAccessible::queryAccessibleInterface(control);
            if (face != nullptr && face->text(QAccessible::Name).isEmpty())
                nameless << control->objectName() + u' ' +
                                QString::fromLatin1(control->metaObject()->className());
        }
        QCOMPARE(nameless.join(u", "_s), QString());
    }
};

GUI_TEST_MAIN(AccessibleNamesTest)
#include "AccessibleNamesTest.moc"
