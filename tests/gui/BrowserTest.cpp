#include "tests/gui/FrameFixture.h"

#include "browser/frmBrowser.h"
#include "history/HistoryList.h"
#include "pages/viewing/PageMenu.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {
/// A frame with one window whose engine shows nothing yet.
struct OneWindow : StartedFrame {
    OneWindow() : StartedFrame(u"x"_s)
    {
        engine(0)->calls();
        browser = window(1);
        combo = browser->findChild<QComboBox*>(u"cboAddress"_s);
        toolbar = browser->findChild<QToolBar*>(u"tbToolBar"_s);
        timer = browser->findChild<QTimer*>(u"timTimer"_s);
        bar = browser->findChild<QProgressBar*>(u"ProgressBar1"_s);
        page = engine(0);
    }
    void tick() { QMetaObject::invokeMethod(timer, "timeout", Qt::DirectConnection); }
    void click(const char* key) { toolbar->findChild<QAction*>(QLatin1String(key))->trigger(); }
    bool busy() { return timer->isActive(); }

    frmBrowser* browser;
    QComboBox* combo;
    QToolBar* toolbar;
    QTimer* timer;
    QProgressBar* bar;
    QPointer<FakeEngine> page;
};
} // namespace

class BrowserTest : public TestCase {
    Q_OBJECT
private slots:
    void captionAndHistoryFollowTheirOwnRules()
    {
        // The titles of the frame and of the page, which also is its name.
        for (const auto& [frameTitle, name, url, caption, visit] :
             {std::tuple{u"T"_s, u"T"_s, u"http://e/"_s, u"T"_s, u"http://e/=T"_s},
              {u""_s, u"Own"_s, u"http://f/"_s, u"Own"_s, u"http://f/="_s},
              // The name ends the address; an empty one ends every address.
              {u"F"_s, u"e/f"_s, u"http://e/f"_s, u"F"_s, u"location=F"_s},
              {u"F"_s, u""_s, u"http://f/"_s, u"F"_s, u"location=F"_s}}) {
            OneWindow w;
            w.page->locationUrl = u"location"_s;
            w.page->locationName = name;
            w.page->document = EngineDocument{name};
            emit w.page->NavigateComplete2(EngineFrame{EngineDocument{frameTitle}}, url);
            QCOMPARE(w.browser->windowTitle(), caption);
            const auto& item = w.frame().History().Item(1);
            QCOMPARE(item->Url() + u'=' + item->Title(), visit);
            QCOMPARE(w.combo->currentText(), u"location"_s);
        }
    }

    void aFailingHistoryLeavesTheWindowUsable()
    {
        OneWindow w;
        w.frame().preferences().HistoryRows(0);
        w.frame().SetDropDisabled(true);
        w.frame().SetDropDisabled(true); // no counter
        w.page->arrive(u"http://a/"_s, u"a"_s);
        QCOMPARE(w.frame().History().Count(), 0);
        QVERIFY(w.frame().area().viewport()->acceptDrops());
        QTest::keyClick(w.combo->lineEdit(), Qt::Key_Return);
        QCOMPARE(w.page->calls(), u"Navigate http://a/"_s);
    }

    /// A page can make addresses of megabytes, as many as it likes.
    void longAddressesAreKeptNowhere()
    {
        OneWindow w;
        const int listed = w.combo->count();
        const QString address = u"http://a/"_s + QString(4096, u'x');
        w.page->arrive(address, u"a"_s);
        QCOMPARE(w.combo->currentText(), address.left(4096) + u'…');
        QCOMPARE(w.combo->count(), listed);
        QCOMPARE(w.frame().History().Count(), 0);
    }

    void aPopUpIsRefusedOnceAfterAButton()
    {
        OneWindow w;
        w.click("Back");
        w.click("Refresh");
        QCOMPARE(w.page->calls(), u"GoBack|Refresh"_s);
        w.frame().NewBrowser();
        w.page->failing = true; // an engine that fails changes nothing
        w.click("Home");
        w.page->arrive(u"http://home/"_s, u"home"_s);
        // Any window's request meets the flag, and only the first one.
        for (const bool refused : {true, false}) {
            EngineControl* target = nullptr;
            bool cancel = false;
            emit w.engine(1)->NewWindow2(target, cancel);
            QCOMPARE(cancel, refused);
            QCOMPARE(target == nullptr, refused);
            QCOMPARE(w.frame().bNewSize(), !refused);
        }
        QCOMPARE(w.keys(), u"1 2 3"_s);
        QVERIFY(w.window(3)->bNewWindow());
    }

    void drivesOpenByTheirFirstTwoCharacters()
    {
        OneWindow w;
        QAction* last = w.browser->findChild<QMenu*>(u"Drives"_s)->actions().constLast();
        QCOMPARE(last->text(), u"D: [A&&B]"_s);
        last->trigger();
        QCOMPARE(w.page->calls(), u"Navigate D:"_s);
    }

    void theBusySignRunsTenSteps()
    {
        OneWindow w;
        w.page->busy = true;
        QVERIFY(QTest::qWaitForWindowExposed(&w.frame()));
        const auto* drives = w.toolbar->findChild<QWidget*>(u"Drive"_s);
        const QRect place = drives->geometry();
        QString steps;
        for (int i = 0; i < 12; ++i) {
            w.tick();
            steps += QString::number(w.bar->value());
        }
        // The timer may have ticked while the window appeared.
        QVERIFY2(u"0123456789012345678901"_s.contains(steps), qPrintable(steps));
        w.click("Stop"); // keeps the caption of a nameless page
        QCOMPARE(w.browser->windowTitle(), u"In Bearbeitung..."_s);
        QVERIFY(!w.busy());
        w.page->locationName = u"name"_s;
        w.page->busy = false;
        w.tick();
        QCOMPARE(w.browser->windowTitle(), u"name"_s);
        QTRY_VERIFY(w.bar->isHidden());
        QCOMPARE(w.bar->value(), 0);
        QCoreApplication::processEvents();
        QCOMPARE(drives->geometry(), place);
    }
};

QTEST_MAIN(BrowserTest)
#include "BrowserTest.moc"
