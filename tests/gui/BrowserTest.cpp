#include "tests/gui/FrameFixture.h"

#include "browser/frmBrowser.h"
#include "history/HistoryItem.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QProgressBar>
#include <QTimer>
#include <QToolBar>
#include <QUrl>

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
    void enterOpensTheTextAsTyped()
    {
        OneWindow w;
        w.combo->setEditText(u" http://a b"_s);
        QTest::keyClick(w.combo->lineEdit(), Qt::Key_Enter);
        QCOMPARE(w.page->calls(), u"Navigate  http://a b"_s);
        w.page->arrive(u"http://one/"_s, u"one"_s);
        w.combo->setCurrentIndex(0);
        emit w.combo->activated(0); // choosing an entry alone opens nothing
        QCOMPARE(w.page->calls(), QString());
        w.page->host()->hide();
        w.timer->stop();
        QTest::keyClick(w.combo->lineEdit(), Qt::Key_Return);
        QCOMPARE(w.page->calls(), QString());
        QVERIFY(w.busy()); // the busy sign comes before the test of visibility
    }

    void drops()
    {
        OneWindow w;
        QMimeData data;
        w.combo->setEditText(u"before"_s);
        QVERIFY(!dropOn(w.combo->lineEdit(), QPoint(5, 5), data));
        QCOMPARE(w.page->calls() + w.combo->currentText(), u"before"_s);
        data.setText(u"file:///tmp/a%20b\r\nfile:///tmp/c"_s); // names the files again
        data.setUrls({QUrl(u"file:///tmp/a%20b"_s), QUrl(u"file:///tmp/c"_s)});
        QVERIFY(dropOn(w.combo->lineEdit(), QPoint(5, 5), data));
        QCOMPARE(w.page->calls(), u"Navigate /tmp/a b"_s);
        QCOMPARE(w.combo->currentText(), u"/tmp/a b"_s);
    }

    void theListHoldsEachAddressOnce()
    {
        OneWindow w;
        for (const auto& url : {u"A"_s, u"B"_s, u"A"_s, u"a"_s})
            w.page->arrive(url, u"t"_s);
        QCOMPARE(w.combo->count(), 3);
        QCOMPARE(w.combo->itemText(0) + w.combo->itemText(1) + w.combo->itemText(2), u"aAB"_s);
        QCOMPARE(w.combo->currentText(), u"a"_s);
    }

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
        w.start.preferences().HistoryRows(0);
        w.start.SetDropDisabled(true);
        w.start.SetDropDisabled(true); // no counter
        w.page->arrive(u"http://a/"_s, u"a"_s);
        QCOMPARE(w.frame().History().Count(), 0);
        QVERIFY(w.frame().area().viewport()->acceptDrops());
        QTest::keyClick(w.combo->lineEdit(), Qt::Key_Return);
        QCOMPARE(w.page->calls(), u"Navigate http://a/"_s);
    }

    void buttonsRefuseTheNextWindow()
    {
        for (const auto& [key, call] : {std::pair{"Back", u"GoBack"_s},
                                        {"Refresh", u"Refresh"_s},
                                        {"Home", u"Navigate home"_s}}) {
            OneWindow w;
            w.start.preferences().HomeUrl(u"home"_s);
            w.page->failing = true; // an engine that fails changes nothing
            w.frame().bOpenNewWindow(false);
            w.click(key);
            QCOMPARE(w.page->calls(), call);
            QVERIFY(w.frame().bOpenNewWindow());
        }
    }

    void aPopUpIsRefusedOnceAfterAButton()
    {
        OneWindow w;
        w.frame().NewBrowser();
        w.click("Home");
        w.page->arrive(u"http://home/"_s, u"home"_s);
        // Any window's request meets the flag, and only the first one.
        for (const bool refused : {true, false}) {
            EngineControl* lent = nullptr;
            bool cancel = false;
            emit w.engine(1)->NewWindow2(lent, cancel);
            QCOMPARE(cancel, refused);
            QCOMPARE(lent == nullptr, refused);
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
        QString steps;
        for (int i = 0; i < 12; ++i) {
            QMetaObject::invokeMethod(w.timer, "timeout", Qt::DirectConnection);
            steps += QString::number(w.bar->value());
        }
        QCOMPARE(steps, u"012345678901"_s);
        w.click("Stop"); // keeps the caption of a nameless page
        QCOMPARE(w.browser->windowTitle(), u"In Bearbeitung..."_s);
        QVERIFY(!w.busy());
        QCOMPARE(w.bar->value(), 1); // of the last step
        w.page->locationName = u"name"_s;
        w.page->busy = false;
        QMetaObject::invokeMethod(w.timer, "timeout", Qt::DirectConnection);
        QCOMPARE(w.browser->windowTitle(), u"name"_s);
        QTRY_VERIFY(w.bar->isHidden());
        QCOMPARE(w.bar->value(), 0);
    }

    void pagesSizeTheirWindow()
    {
        OneWindow w;
        w.browser->showNormal();
        const QSize frame = w.browser->size() - w.page->host()->parentWidget()->size();
        const int bars = w.page->host()->y();
        w.browser->showToolbar(false); // counts all the same
        emit w.page->WindowSetHeight(300);
        emit w.page->WindowSetWidth(400);
        QCOMPARE(w.browser->size(), QSize(frame.width() + 400 + 40, frame.height() + bars + 330));
    }

    void quotesGoBehindTheDrives()
    {
        OneWindow w;
        QString seen;
        frmBrowser* window = nullptr;
        frmBrowser browser(w.frame(),
                           {[](QWidget* parent) { return std::make_unique<FakeEngine>(parent); },
                            [&] {
                                seen = window->StartingAddress();
                                return QStringList();
                            }});
        window = &browser;
        browser.StartingAddress(u"\"a\""_s);
        browser.load();
        QCOMPARE(seen + browser.StartingAddress(), u"\"a\"a"_s);
    }

    void aPageMayKeepItsWindow()
    {
        OneWindow w;
        w.page->asksToClose = true;
        w.browser->close();
        w.frame().VisitUrl(u"y"_s);
        w.engine(1)->asksToClose = true;
        QCOMPARE(w.keys(), u"1 2"_s);
        bool cancel = false;
        emit w.page->WindowClosing(false, cancel); // the user lets it go
        QCOMPARE(w.keys(), u"2"_s);
        w.frame().close(); // asks no page
        QCOMPARE(w.keys(), QString());
    }
};

GUI_TEST_MAIN(BrowserTest)
#include "BrowserTest.moc"
