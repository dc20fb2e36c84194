#include "app/ActiveChild.h"
#include "tests/gui/FrameFixture.h"

#include <QComboBox>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace {
/// A started frame with one window.
struct Started : StartedFrame {
    Started() : StartedFrame(u"x"_s) {}

    void choose(const char* name) { item(name)->trigger(); }
    void open(const char* menu) { emit item(menu)->menu()->aboutToShow(); }
    /// The page of a window asks for a new one.
    void popUp(std::size_t from)
    {
        EngineControl* target = nullptr;
        bool cancel = false;
        emit engine(from)->NewWindow2(target, cancel);
    }
    void choose(int position) { frame().activeChild().choose(*window(position)); }
};

} // namespace

class CommandsTest : public TestCase {
    Q_OBJECT
private slots:
    void theActiveWindowsBars()
    {
        Started f;
        f.frame().NewBrowser();
        f.choose("mn_ctxtAdresszeile");
        QVERIFY(!f.window(2)->isAddressBarShown() && f.window(1)->isAddressBarShown());
        f.choose("mn_toolbar");
        f.open("mn_Fenster");
        QVERIFY(!f.item("mn_adresszeile")->isChecked() && !f.item("mn_toolbar")->isChecked());
        QCOMPARE(f.engine(1)->host()->y(), 0);
    }

    void theWindowList()
    {
        Started f;
        f.frame().NewBrowser();
        f.engine(0)->arrive(u"u"_s, u"A & B"_s + QString(90, u'x'));
        f.engine(1)->arrive(u"v"_s, u"C"_s);
        for (int i = 0; i < 2; ++i) // rebuilt, not added to
            f.open("mn_Fenster");
        const QList<QAction*> entries = f.item("mn_Fenster")->menu()->actions().mid(8);
        QCOMPARE(entries.size(), 3);
        QVERIFY(entries[0]->isSeparator());
        QCOMPARE(entries[1]->text(), u"&1 A && B"_s + QString(54, u'x') + u'…');
        QCOMPARE(entries[2]->text(), u"&2 C"_s);
        QVERIFY(!entries[1]->isChecked() && entries[2]->isChecked());
        QCOMPARE(windowListEntry(10, u"C"_s), u"10 C"_s); // the key 1 is the first one's
        QCOMPARE(windowListEntry(3, {}), u"&3 Leeres Fenster"_s);
    }

    void windowsStayWithinReach()
    {
        Started f;
        f.frame().NewBrowser();
        const auto area = [&] { return f.frame().area().viewport()->rect(); };
        emit f.engine(1)->WindowSetHeight(area().height() / 2);
        emit f.engine(1)->WindowSetWidth(area().width() / 2);
        QVERIFY(area().contains(f.window(2)->geometry()));
        const int width = f.window(2)->width();
        for (const auto& [lost, found] :
             {std::pair{QPoint(area().width() - 20, 10), QPoint(area().width() - 100, 10)},
              {QPoint(20 - width, -5), QPoint(100 - width, 0)},
              {QPoint(-20, 10), QPoint(-20, 10)}}) {
            f.window(2)->move(lost);
            f.choose(2);
            QCOMPARE(f.window(2)->pos(), found);
        }
    }

    void symbolsLieOverTheTilesOnly()
    {
        Started f;
        f.frame().NewBrowser();
        f.choose(1);
        f.window(1)->showMinimized();
        QTRY_COMPARE(f.frame().activeBrowser(), f.window(2));
        const auto isOnTop = [&] {
            const QWidget* top =
                f.frame().area().viewport()->childAt(f.window(1)->geometry().center());
            return top == f.window(1) || f.window(1)->isAncestorOf(top);
        };
        QVERIFY(isOnTop());
        f.frame().NewBrowser();
        QVERIFY(isOnTop());
        f.window(3)->showMaximized();
        QVERIFY(!isOnTop());
        f.window(3)->showNormal();
        QVERIFY(isOnTop());
    }

    void aWindowOfAnInactiveOneStaysBehind()
    {
        Started f;
        f.frame().preferences().HomeUrl({});
        f.frame().NewBrowser();
        f.window(1)->showMaximized();
        f.choose(2);
        f.window(2)->focusAddress();
        QVERIFY(QTest::qWaitForWindowActive(&f.frame()));
        QTest::keyClicks(QApplication::focusWidget(), u"half"_s);
        f.popUp(0);
        QCoreApplication::processEvents();
        QTest::keyClicks(QApplication::focusWidget(), u" an address"_s);
        QCOMPARE(f.window(2)->findChild<QComboBox*>()->currentText(), u"half an address"_s);
        QCOMPARE(f.frame().activeBrowser(), f.window(2));
        f.popUp(1); // its page is active, and so is what it opens
        QCOMPARE(f.frame().activeBrowser(), f.window(4));
        QCOMPARE(QApplication::focusWidget(), f.engine(3)->host());
    }

    void theOpenerFollowsAClosedWindow()
    {
        Started f;
        f.frame().NewBrowser();
        f.frame().NewBrowser();
        const auto active = [&] { return f.frame().activeBrowser()->windowKey(); };
        const auto window = [&](int key) { return f.frame().Browser().Item(QString::number(key)); };
        const auto choose = [&](int key) { f.frame().activeChild().choose(*window(key)); };
        choose(1);
        f.choose("mn_Aktivschließen");
        QCOMPARE(active(), 3); // not the first one made
        f.popUp(1);            // 2 opens 4, that 5
        f.popUp(3);
        choose(4);
        f.choose("mn_Aktivschließen");
        QCOMPARE(active(), 2);
        choose(3);
        choose(5);
        f.choose("mn_Aktivschließen");
        QCOMPARE(active(), 2); // its opener has gone: that one's
    }

    void theHistoryItemNeedsTwoEntries()
    {
        Started f;
        for (int entries = 0; entries < 3; ++entries) {
            f.open("mn_Anzeige");
            QCOMPARE(f.item("mn_Historie")->isEnabled(), entries > 1);
            f.engine(0)->arrive(QString::number(entries), u"t"_s);
        }
    }

    void theMailProgram()
    {
        const QString missing = u"Die Anwendung '/no such/mailer ' konnte nicht gefunden werden."_s;
        for (const auto& [client, message] :
             {std::pair{u""_s, u"Bitte konfigurieren Sie Ihre E-Mail Anwendung."_s},
              {u"/no such/mailer "_s, missing},
              {u"/usr/bin/my mailer"_s, u""_s}}) {
            Started f;
            f.starter.existing << u"/usr/bin/my mailer"_s;
            f.frame().preferences().MailClient(client);
            f.choose("mn_Email");
            QCOMPARE(f.prompt.takeTexts().join(u'/').section(u'|', 2), message);
            QCOMPARE(f.starter.started.join(u'/'), client);
        }
    }
};

QTEST_MAIN(CommandsTest)
#include "CommandsTest.moc"
