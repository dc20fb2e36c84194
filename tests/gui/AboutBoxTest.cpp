#include "app/frmAbout.h"
#include "tests/gui/FakeShell.h"
#include "tests/gui/GuiTest.h"

#include <QFrame>
#include <QLabel>
#include <QPointer>

using namespace Qt::StringLiterals;

class AboutBoxTest : public QObject {
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }

    void showsTitleAndMaker()
    {
        const FakeShell shell;
        const frmAbout box(shell, nullptr);
        const auto label = [&box](const QString& name) { return box.findChild<QLabel*>(name); };
        QCOMPARE(label(u"Label1"_s)->text(), u"Tessera 5.3.5"_s);
        QCOMPARE(label(u"Label2"_s)->text().section(u'\n', 0, 0), u"Ein Tool von Loomwork"_s);
        QVERIFY(!label(u"picIcon"_s)->pixmap().isNull());
        QVERIFY(box.findChild<QFrame*>(u"Frame1"_s)->isAncestorOf(label(u"Label2"_s)));
    }

    void closes_data()
    {
        QTest::addColumn<bool>("byEscape");
        QTest::newRow("focus lost") << false;
        QTest::newRow("Escape") << true;
    }
    void closes()
    {
        QFETCH(bool, byEscape);
        const FakeShell shell;
        QWidget frame;
        frame.show();
        QVERIFY(QTest::qWaitForWindowExposed(&frame));
        const QPointer<frmAbout> box = new frmAbout(shell, &frame);
        const auto isGone = [&] {
            if (box && !byEscape)
                frame.activateWindow(); // again: a window manager may refuse at first
            return !box;
        };
        box->show();
        box->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(box));
        if (byEscape)
            QTest::keyClick(box, Qt::Key_Escape);
        QVERIFY(QTest::qWaitFor(isGone));
    }
};

GUI_TEST_MAIN(AboutBoxTest)
#include "AboutBoxTest.moc"
