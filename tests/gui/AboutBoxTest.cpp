#include "app/frmAbout.h"
#include "tests/gui/FakeShell.h"
#include "tests/gui/GuiTest.h"

#include <QLabel>
#include <QPointer>

using namespace Qt::StringLiterals;

class AboutBoxTest : public QObject {
    Q_OBJECT
private slots:
    void closesWhenItLosesTheFocus()
    {
        const FakeShell shell;
        QWidget frame;
        frame.show();
        QVERIFY(QTest::qWaitForWindowExposed(&frame));
        const QPointer<frmAbout> box = new frmAbout(shell, &frame);
        QCOMPARE(box->findChild<QLabel*>(u"Label1"_s)->text(), u"Tessera 5.3.5"_s);
        box->show();
        box->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(box));
        // Again and again: a window manager may refuse at first.
        QTRY_VERIFY((frame.activateWindow(), !box));
    }
};

GUI_TEST_MAIN(AboutBoxTest)
#include "AboutBoxTest.moc"
