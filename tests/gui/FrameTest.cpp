#include "tests/gui/FrameFixture.h"

#include "app/DescriptorLimit.h"
#include "app/InstanceServer.h"
#include "app/PaintPacer.h"
#include "app/frmAbout.h"
#include "bookmarks/frmBook.h"

#include <QClipboard>
#include <QFile>
#include <QLabel>

#include <sys/resource.h>

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

class FrameTest : public TestCase {
    Q_OBJECT
private slots:
    void startOpensAMaximisedWindow()
    {
        for (const auto& [startBrowser, address, opened] :
             {std::tuple{-1, u""_s, u"home"_s},
              {0, u""_s, u""_s},
              {0, u"  "_s, u"  "_s}}) { // blanks are an address
            FrameFixture f;
            Prefer stored(f.folder.path());
            stored.LoadPref();
            stored.HomeUrl(u"home"_s);
            stored.StartBrowser(static_cast<qint16>(startBrowser));
            stored.SavePref();
            f.start.Main(address);
            QCOMPARE(f.frame().windowTitle(), u"Tessera 5.3.5"_s);
            QCOMPARE(f.frame().size(), QSize(640, 480));
            QCOMPARE(f.frame().HistoryUrl(), QString());
            QCOMPARE(f.keys(), opened.isEmpty() ? u""_s : u"1"_s);
            if (opened.isEmpty())
                continue;
            QCOMPARE(f.engine(0)->calls(), u"Navigate "_s + opened);
            QCoreApplication::processEvents();
            QVERIFY(f.window(1)->isMaximized());
        }
    }

    /// One whose file or whose image plug-in is missing stays empty without a word.
    void iconsAreDrawn()
    {
        const FrameFixture f;
        for (const QIcon& icon : {f.start.frameIcon(), f.start.childIcon()})
            QCOMPARE(qAlpha(icon.pixmap(16).toImage().pixel(8, 8)), 255);
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
        StartedFrame f;
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
        StartedFrame f;
        f.frame().HistoryUrl(u"waiting"_s);
        f.frame().NewBrowser();
        f.frame().VisitUrl({});
        f.frame().NewBrowser();
        f.frame().VisitUrl(u"x"_s);
        f.frame().NewBrowser();
        const QString home = f.folder.path() + u"\\Lizenz.txt"_s;
        QCOMPARE(f.opened(), QStringList({home, u"waiting"_s, u"waiting"_s, u"x"_s, home}));
    }

    void sizeAndStateOutliveTheRun()
    {
        for (const auto& [state, stored, width] : {std::tuple{Qt::WindowNoState, 0, 700 * 15},
                                                   {Qt::WindowMinimized, 1, 9600},
                                                   {Qt::WindowMaximized, 2, 9600}}) {
            StartedFrame f;
            f.frame().resize(700, 400);
            f.frame().setWindowState(state);
            f.frame().close();
            Prefer again(f.folder.path());
            again.LoadPref();
            QCOMPARE(int{again.MdiState()}, stored);
            QCOMPARE(int{again.MdiWidth()}, width);
            FrameFixture next;
            QVERIFY(
                QFile::copy(f.folder.filePath(u"Pref.tsp"_s), next.folder.filePath(u"Pref.tsp"_s)));
            next.start.Main({});
            QCOMPARE(next.frame().isMaximized(), state == Qt::WindowMaximized);
            QVERIFY(!next.frame().isMinimized());
        }
    }

    void staysOpenWhenSomethingIsUnderWay()
    {
        StartedFrame f;
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

    void unreadPreferencesAreSaid()
    {
        FrameFixture f;
        const QString file = f.folder.filePath(u"Pref.tsp"_s);
        QVERIFY(QFile::link(file, file));
        f.start.Main({});
        QCoreApplication::processEvents();
        const QString text = f.prompt.takeTexts().value(0);
        QVERIFY2(text.contains(u"Voreinstellungen"_s) && text.contains(file), qPrintable(text));
    }

    void aFailedSaveIsShown()
    {
        StartedFrame f;
        // A folder in the file's place cannot be written, not even by root.
        QVERIFY(QFile::remove(f.folder.path() + u"/Pref.tsp"_s));
        QVERIFY(QDir(f.folder.path()).mkdir(u"Pref.tsp"_s));
        f.frame().close();
        const QString text = f.prompt.takeTexts().value(0);
        QVERIFY(text.startsWith(u"Meldung|Exclamation|"_s) && text.contains(u"Pref.tsp"_s));
    }

    void tooFewDescriptorsAreSaid()
    {
        StartedFrame f;
        rlimit limit = {};
        QCOMPARE(::getrlimit(RLIMIT_NOFILE, &limit), 0);
        const rlimit tight{limit.rlim_cur - freeDescriptors() + 63, limit.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &tight), 0);
        f.frame().VisitUrl(u"b"_s);
        QCOMPARE(raiseDescriptorLimit(), std::min(limit.rlim_max, rlim_t{524288}));
        QCOMPARE(f.keys(), u"1"_s);
        const auto* panel = f.frame().findChild<QLabel*>(u"panel3"_s);
        QVERIFY(panel->text().startsWith(u"Kein neues Fenster"_s));
        f.frame().VisitUrl(u"b"_s);
        QCOMPARE(f.keys(), u"1 2"_s);
    }

    void windowsGoWhileTheFrameWalksThem()
    {
        StartedFrame f;
        f.item("mn_Bookmarks")->trigger();
        f.frame().findChild<frmBook*>()->Buch().IsEdit(true);
        f.item("mn_Tessera")->trigger();
        const QPointer<frmAbout> about = f.frame().findChild<frmAbout*>();
        QVERIFY(!about.isNull());
        f.prompt.answerYesNo(false);
        f.prompt.whileOpen([&] { // the question takes the focus from the about box
            QEvent deactivate(QEvent::WindowDeactivate);
            QCoreApplication::sendEvent(about, &deactivate);
            QCoreApplication::sendPostedEvents(about, QEvent::DeferredDelete);
            QTRY_VERIFY(about.isNull());
            QVERIFY(!f.start.takeOver({false, u"http://late/"_s, {}, {}}));
        });
        QGuiApplication::clipboard()->setText(u"before"_s);
        QVERIFY(f.frame().close());
        QCOMPARE(f.prompt.takeTexts().size(), 1);
        QVERIFY(!f.start.takeOver({true, {}, {}, {}})); // after the end
        QCOMPARE(QGuiApplication::clipboard()->text(), u"before"_s);
    }

    void anAddressIsTakenOver()
    {
        for (const auto& [state, dropsOff, toFront, keys] :
             {std::tuple{Qt::WindowNoState, false, false, u"1 2"_s},
              {Qt::WindowMinimized, false, false, u"1 2"_s},
              {Qt::WindowMaximized, false, false, u"1 2"_s},
              {Qt::WindowNoState, true, false, u"1"_s}, // behind a dialog
              {Qt::WindowMinimized, true, false, u"1"_s},
              {Qt::WindowMinimized, false, true, u"1"_s}}) {
            StartedFrame f;
            f.frame().setWindowState(state);
            f.start.SetDropDisabled(dropsOff);
            QGuiApplication::clipboard()->setText(u"before"_s);
            QVERIFY(f.start.takeOver({toFront, toFront ? QString() : u"http://x/"_s, {}, {}}));
            QCOMPARE(f.keys(), keys);
            QVERIFY(!f.frame().isMinimized());
            QCOMPARE(f.frame().isMaximized(), state == Qt::WindowMaximized);
            QCOMPARE(f.frame().HistoryUrl(), QString());
            QCOMPARE(QGuiApplication::clipboard()->text(), toFront ? u"before"_s : u"http://x/"_s);
            f.start.SetDropDisabled(false);
            QCoreApplication::processEvents();
            QVERIFY(f.keys() == u"1"_s || !dropsOff); // what was refused does not come later
        }
    }
};

GUI_TEST_MAIN(FrameTest)
#include "FrameTest.moc"
