#include "tests/gui/FrameFixture.h"

#include "app/InstanceServer.h"
#include "app/PaintPacer.h"
#include "app/frmAbout.h"
#include "bookmarks/frmBook.h"
#include "launcher/DescriptorLimit.h"

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
    /// One whose file or whose image plug-in is missing stays empty without a word.
    void iconsAreDrawn()
    {
        const FrameFixture f;
        for (const QIcon& icon : {f.frame().frameIcon(), f.frame().childIcon()})
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

    void preferencesThatFailAreSaid()
    {
        FrameFixture f;
        const QString file = f.folder.filePath(u"Pref.tsp"_s);
        QVERIFY(QFile::link(file, file)); // neither read nor written, not even by root
        f.start.Main({});
        QCoreApplication::processEvents();
        const QString unread = f.prompt.takeTexts().value(0);
        QVERIFY2(unread.contains(u"Voreinstellungen"_s) && unread.contains(file),
                 qPrintable(unread));
        f.frame().close();
        const QString unsaved = f.prompt.takeTexts().value(0);
        QVERIFY2(unsaved.startsWith(u"Meldung|Exclamation|"_s), qPrintable(unsaved));
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
};

QTEST_MAIN(FrameTest)
#include "FrameTest.moc"
