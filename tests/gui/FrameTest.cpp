#include "tests/gui/FrameFixture.h"

#include "app/InstanceServer.h"
#include "app/PaintPacer.h"
#include "history/HistoryItem.h"

#include <QClipboard>
#include <QFile>
#include <QtTest>

using namespace Qt::StringLiterals;

/// A window whose paints take their time.
class SlowWindow : public QWidget {
public:
    int paints = 0;
    QString painted;

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        ++paints;
        painted = windowTitle();
        QTest::qSleep(60);
    }
};

class FrameTest : public QObject {
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }

    void startOpensAMaximisedWindow_data()
    {
        QTest::addColumn<int>("startBrowser");
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("opened");
        QTest::newRow("start address") << -1 << u""_s << u"home"_s;
        QTest::newRow("none wanted") << 0 << u""_s << u""_s;
        QTest::newRow("blanks are an address") << 0 << u"  "_s << u"  "_s;
    }
    void startOpensAMaximisedWindow()
    {
        QFETCH(int, startBrowser);
        QFETCH(QString, address);
        QFETCH(QString, opened);
        FrameFixture f;
        Prefer stored(f.folder.path());
        stored.LoadPref();
        stored.HomeUrl(u"home"_s);
        stored.StartBrowser(static_cast<qint16>(startBrowser));
        stored.SavePref();

        f.start.Main(address);
        QCOMPARE(f.frame().windowTitle(), u"Tessera 5.3.5"_s);
        QCOMPARE(f.item("mn_Tessera")->text(), u"&Info über Tessera 5.3.5"_s);
        QCOMPARE(f.frame().size(), QSize(640, 480));
        QCOMPARE(f.frame().HistoryUrl(), QString());
        QCOMPARE(f.keys(), opened.isEmpty() ? u""_s : u"1"_s);
        if (!opened.isEmpty()) {
            QCOMPARE(f.engine(0)->calls(), u"Navigate "_s + opened);
            QVERIFY(f.window(1)->isMaximized());
            QCoreApplication::processEvents();
            QVERIFY(f.window(1)->isMaximized());
        }
    }

    void slowPaintsLeaveTime()
    {
        QCOMPARE(pauseAfterPaint(16), 0); // a display's beat
        SlowWindow window;
        new PaintPacer(&window);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        window.paints = 0;
        QElapsedTimer clock;
        clock.start();
        for (int change = 1; clock.elapsed() < 600; ++change) {
            window.setWindowTitle(QString::number(change));
            window.update();
            QCoreApplication::processEvents();
        }
        QVERIFY2(window.paints <= 6, QByteArray::number(window.paints).constData());
        QTRY_COMPARE(window.painted, window.windowTitle()); // the last change is not lost
    }

    void numbersAreNeverUsedAgain()
    {
        FrameFixture f;
        f.start.Main({});
        f.frame().VisitUrl(u"b"_s);
        f.frame().VisitUrl({}); // opens nothing
        QCOMPARE(f.keys(), u"1 2"_s);
        f.window(1)->close();
        QCOMPARE(f.keys(), u"2"_s);
        f.frame().NewBrowser();
        QCOMPARE(f.keys(), u"2 3"_s);
        QCOMPARE(f.window(2)->windowKey(), 3);
        QCOMPARE(int{f.frame().counter()}, 2);
    }

    void aWaitingAddressIsOpenedUntilAVisit()
    {
        FrameFixture f;
        f.start.Main({});
        f.frame().HistoryUrl(u"waiting"_s);
        f.frame().NewBrowser();
        f.frame().VisitUrl({});
        f.frame().NewBrowser();
        f.frame().VisitUrl(u"x"_s);
        f.frame().NewBrowser();
        QStringList opened;
        for (const auto& engine : f.engines)
            opened << engine->calls().section(u' ', 1);
        const QString home = f.folder.path() + u"\\Lizenz.txt"_s;
        QCOMPARE(opened, QStringList({home, u"waiting"_s, u"waiting"_s, u"x"_s, home}));
    }

    void newWindowsAreArranged()
    {
        FrameFixture f;
        f.start.Main({});
        QVERIFY(QTest::qWaitForWindowExposed(&f.frame()));
        f.frame().NewBrowser();
        QVERIFY(!f.window(1)->isMaximized());
        const int height = f.frame().area().viewport()->height();
        QCOMPARE(f.window(1)->geometry().top(), 0);
        QCOMPARE(f.window(2)->geometry().top(), height / 2);
        QCOMPARE(f.window(2)->geometry().bottom(), height - 1);
        f.frame().menus().checkArrangement(Arrangement::None);
        f.window(1)->setGeometry(5, 6, 300, 200);
        f.frame().NewBrowser();
        QCOMPARE(f.window(1)->geometry(), QRect(5, 6, 300, 200));
    }

    void closingStoresSizeAndState_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<int>("stored");
        QTest::addColumn<int>("width");
        QTest::newRow("normal") << int{Qt::WindowNoState} << 0 << 700 * 15;
        QTest::newRow("minimised") << int{Qt::WindowMinimized} << 1 << 9600;
        QTest::newRow("maximised") << int{Qt::WindowMaximized} << 2 << 9600;
    }
    void closingStoresSizeAndState()
    {
        QFETCH(int, state);
        QFETCH(int, stored);
        QFETCH(int, width);
        FrameFixture f;
        f.start.Main({});
        f.frame().resize(700, 400);
        f.frame().setWindowState(static_cast<Qt::WindowState>(state));
        QSignalSpy unloaded(&f.frame(), &MDIForm1::unloaded);
        f.frame().close();
        QCOMPARE(unloaded.count(), 1);
        QCOMPARE(int{f.frame().counter()}, 0);
        Prefer again(f.folder.path());
        again.LoadPref();
        QCOMPARE(int{again.MdiState()}, stored);
        QCOMPARE(int{again.MdiWidth()}, width);
    }

    void staysOpenWhenSomethingIsUnderWay()
    {
        FrameFixture f;
        f.start.Main({});
        bool mayEnd = false;
        int asked = 0;
        f.frame().addEndCheck([&] { return ++asked > 0 && mayEnd; });
        f.frame().addEndCheck([&] { return ++asked > 0; });
        QVERIFY(!f.frame().close());
        QVERIFY(f.frame().isVisible());
        QCOMPARE(f.keys(), u"1"_s);
        QCOMPARE(asked, 1);
        mayEnd = true;
        QVERIFY(f.frame().close());
        QCOMPARE(asked, 3);
        QCOMPARE(f.keys(), QString());
    }

    void onlyTheMaximisedStateComesBack()
    {
        for (const qint16 state : {qint16{1}, qint16{2}}) {
            FrameFixture f;
            Prefer stored(f.folder.path());
            stored.LoadPref();
            stored.MdiState(state);
            stored.SavePref();
            f.start.Main({});
            QCOMPARE(f.frame().isMaximized(), state == 2);
            QVERIFY(!f.frame().isMinimized());
        }
    }

    void aFailedSaveIsShown()
    {
        FrameFixture f;
        f.start.Main({});
        // A folder in the file's place cannot be written, not even by root.
        QVERIFY(QFile::remove(f.folder.path() + u"/Pref.tsp"_s));
        QVERIFY(QDir(f.folder.path()).mkdir(u"Pref.tsp"_s));
        f.frame().close();
        const QString text = f.prompt.takeTexts().value(0);
        QVERIFY(text.startsWith(u"Meldung|Exclamation|"_s) && text.contains(u"Pref.tsp"_s));
    }

    void anAddressIsTakenOver_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<bool>("dropsOff");
        QTest::addColumn<bool>("toFront");
        QTest::addColumn<QString>("keys");
        QTest::newRow("normal") << 0 << false << false << u"1 2"_s;
        QTest::newRow("minimised") << 1 << false << false << u"1 2"_s;
        QTest::newRow("maximised") << 2 << false << false << u"1 2"_s;
        QTest::newRow("behind a dialog") << 0 << true << false << u"1"_s;
        QTest::newRow("minimised behind a dialog") << 1 << true << false << u"1"_s;
        QTest::newRow("to the front") << 1 << false << true << u"1"_s;
    }
    void anAddressIsTakenOver()
    {
        QFETCH(int, state);
        QFETCH(bool, dropsOff);
        QFETCH(bool, toFront);
        FrameFixture f;
        f.start.Main({});
        f.frame().setWindowState(static_cast<Qt::WindowState>(state)); // 1 and 2 are its values
        f.start.SetDropDisabled(dropsOff);
        QGuiApplication::clipboard()->setText(u"before"_s);
        f.start.takeOver({toFront, toFront ? QString() : u"http://x/"_s, {}, {}});
        QTEST(f.keys(), "keys");
        QVERIFY(!f.frame().isMinimized());
        QCOMPARE(f.frame().isMaximized(), state == 2);
        QCOMPARE(f.frame().HistoryUrl(), QString());
        QCOMPARE(QGuiApplication::clipboard()->text(), toFront ? u"before"_s : u"http://x/"_s);
        f.start.SetDropDisabled(false);
        QCoreApplication::processEvents();
        QVERIFY(f.keys() == u"1"_s || !dropsOff); // what was refused does not come later
    }

    void aRestoredFrameIsArrangedAgain()
    {
        FrameFixture f;
        f.start.Main({});
        f.frame().VisitUrl(u"b"_s);
        const QRect arranged = f.window(2)->geometry();
        f.window(2)->setGeometry(5, 6, 300, 200);
        f.start.takeOver({true, {}, {}, {}});
        QCOMPARE(f.window(2)->geometry(), QRect(5, 6, 300, 200)); // it was not minimised
        f.frame().setWindowState(Qt::WindowMinimized);
        f.start.SetDropDisabled(true);
        f.start.takeOver({false, u"http://x/"_s, {}, {}});
        QCOMPARE(f.window(2)->geometry(), arranged);
    }
};

GUI_TEST_MAIN(FrameTest)
#include "FrameTest.moc"
