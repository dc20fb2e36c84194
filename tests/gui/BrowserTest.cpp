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
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {
/// A frame with one window whose engine shows nothing yet.
struct OneWindow : FrameFixture {
    OneWindow()
    {
        start.Main(u"x"_s);
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
    QStringList list()
    {
        QStringList all;
        for (int i = 0; i < combo->count(); ++i)
            all << combo->itemText(i);
        return all;
    }
    /// Drops on the address line as the toolkit delivers it.
    bool drop(const QMimeData& offered)
    {
        const auto actions = Qt::CopyAction | Qt::MoveAction;
        QDragEnterEvent enter(QPoint(5, 5), actions, &offered, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(combo->lineEdit(), &enter);
        QDropEvent event(QPointF(5, 5), actions, &offered, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(combo->lineEdit(), &event);
        return event.isAccepted() && event.dropAction() == Qt::CopyAction;
    }

    frmBrowser* browser;
    QComboBox* combo;
    QToolBar* toolbar;
    QTimer* timer;
    QProgressBar* bar;
    QPointer<FakeEngine> page;
};
} // namespace

class BrowserTest : public QObject {
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }

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

    void drops_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("urls");
        QTest::addColumn<QString>("opened");
        const QStringList files{u"file:///tmp/a%20b"_s, u"file:///tmp/c"_s};
        QTest::newRow("text") << u"www.a.de"_s << QStringList() << u"www.a.de"_s;
        QTest::newRow("files named again as text")
            << u"file:///tmp/a%20b\r\nfile:///tmp/c"_s << files << u"/tmp/a b"_s;
        QTest::newRow("neither") << QString() << QStringList() << QString();
    }
    void drops()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, urls);
        QFETCH(QString, opened);
        OneWindow w;
        QMimeData data;
        if (!text.isNull())
            data.setText(text);
        if (!urls.isEmpty())
            data.setUrls(QUrl::fromStringList(urls));
        w.combo->setEditText(u"before"_s);
        QCOMPARE(w.drop(data), !opened.isNull());
        QCOMPARE(w.page->calls(), opened.isNull() ? QString() : u"Navigate "_s + opened);
        QCOMPARE(w.combo->currentText(), opened.isNull() ? u"before"_s : opened);
    }

    void theListHoldsEachAddressOnce()
    {
        OneWindow w;
        for (const auto& url : {u"A"_s, u"B"_s, u"A"_s, u"a"_s})
            w.page->arrive(url, u"t"_s);
        QCOMPARE(w.list(), QStringList({u"a"_s, u"A"_s, u"B"_s}));
        QCOMPARE(w.combo->currentText(), u"a"_s);
    }

    void captionAndHistoryFollowTheirOwnRules_data()
    {
        using Title = std::optional<QString>;
        QTest::addColumn<Title>("frameTitle");
        QTest::addColumn<Title>("ownTitle");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("visit");
        QTest::newRow("a page") << Title(u"T"_s) << Title(u"T"_s) << u"T"_s << u"http://e/"_s
                                << u"T"_s << u"http://e/=T"_s;
        QTest::newRow("a frame without title") << Title(u""_s) << Title(u"Own"_s) << u"Own"_s
                                               << u"http://f/"_s << u"Own"_s << u"http://f/="_s;
        QTest::newRow("the address ends with the name")
            << Title(u"F"_s) << Title(u"e/f"_s) << u"e/f"_s << u"http://e/f"_s << u"F"_s
            << u"location=F"_s;
        QTest::newRow("an empty name is the end of every address")
            << Title(u"F"_s) << Title(u""_s) << u""_s << u"http://f/"_s << u"F"_s
            << u"location=F"_s;
    }
    void captionAndHistoryFollowTheirOwnRules()
    {
        using Title = std::optional<QString>;
        QFETCH(Title, frameTitle);
        QFETCH(Title, ownTitle);
        QFETCH(QString, name);
        QFETCH(QString, url);
        OneWindow w;
        w.page->locationUrl = u"location"_s;
        w.page->locationName = name;
        if (ownTitle)
            w.page->document = EngineDocument{*ownTitle};
        EngineFrame frame;
        if (frameTitle)
            frame.Document = EngineDocument{*frameTitle};
        emit w.page->NavigateComplete2(frame, url);
        QTEST(w.browser->windowTitle(), "caption");
        const auto& item = w.frame().History().Item(1);
        QTEST(item->Url() + u'=' + item->Title(), "visit");
        QCOMPARE(w.combo->currentText(), u"location"_s);
    }

    void aFailingHistoryLeavesTheWindowUsable()
    {
        OneWindow w;
        w.start.preferences().HistoryRows(0);
        w.start.SetDropDisabled(true);
        w.page->arrive(u"http://a/"_s, u"a"_s);
        QCOMPARE(w.frame().History().Count(), 0);
        QVERIFY(w.frame().area().viewport()->acceptDrops());
        QTest::keyClick(w.combo->lineEdit(), Qt::Key_Return);
        QCOMPARE(w.page->calls(), u"Navigate http://a/"_s);
    }

    void buttons_data()
    {
        QTest::addColumn<QByteArray>("key");
        QTest::addColumn<QString>("call");
        QTest::addColumn<bool>("refusesNext");
        QTest::newRow("back") << "Back"_ba << u"GoBack"_s << true;
        QTest::newRow("refresh") << "Refresh"_ba << u"Refresh"_s << true;
        QTest::newRow("home") << "Home"_ba << u"Navigate home"_s << true;
        QTest::newRow("drive") << "Drive"_ba << u""_s << false;
    }
    void buttons()
    {
        QFETCH(QByteArray, key);
        QFETCH(QString, call);
        QFETCH(bool, refusesNext);
        OneWindow w;
        w.start.preferences().HomeUrl(u"home"_s);
        w.start.preferences().SearchEngine(u"search"_s);
        w.page->failing = true; // an engine that fails changes nothing
        w.frame().bOpenNewWindow(!refusesNext);
        w.click(key.constData());
        QCOMPARE(w.page->calls(), call);
        QCOMPARE(w.frame().bOpenNewWindow(), refusesNext);
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
        const auto* menu = w.browser->findChild<QMenu*>(u"Drives"_s);
        QStringList texts;
        QString opened;
        for (QAction* entry : menu->actions()) {
            texts << entry->text();
            entry->trigger();
            opened += w.page->calls() + u';';
        }
        QCOMPARE(texts, QStringList({u"C: [ROOT]"_s, u"-"_s, u"D: [A&&B]"_s}));
        QCOMPARE(opened, u"Navigate C:;Navigate -;Navigate D:;"_s);
        QVERIFY(w.frame().bOpenNewWindow());
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
        QCOMPARE(w.browser->windowTitle(), u"In Bearbeitung..."_s);
        w.page->busy = false;
        w.page->locationName = u"name"_s;
        QMetaObject::invokeMethod(w.timer, "timeout", Qt::DirectConnection);
        QCOMPARE(w.browser->windowTitle(), u"name"_s);
        QVERIFY(!w.busy());
        QTRY_VERIFY(w.bar->isHidden());
    }

    void stopKeepsTheCaptionOfANamelessPage()
    {
        OneWindow w;
        w.page->busy = true;
        QMetaObject::invokeMethod(w.timer, "timeout", Qt::DirectConnection);
        w.click("Stop");
        QCOMPARE(w.browser->windowTitle(), u"In Bearbeitung..."_s);
        QVERIFY(!w.busy());
        QVERIFY(!w.toolbar->findChild<QAction*>(u"Sep"_s)->isVisible());
        w.page->locationName = u"name"_s;
        w.click("Stop");
        QCOMPARE(w.browser->windowTitle(), u"name"_s);
    }

    void theEngineFillsWhatTheBarsLeave()
    {
        OneWindow w;
        QVERIFY(QTest::qWaitForWindowExposed(&w.frame()));
        const int bars = w.page->host()->y();
        QVERIFY(bars > 0);
        w.browser->showToolbar(false);
        w.browser->PubResize();
        const int left = w.page->host()->y();
        QVERIFY(left < bars && left > 0);
        w.browser->showAddressBar(false);
        w.browser->PubResize();
        QCOMPARE(w.page->host()->y(), 0);
        QCOMPARE(w.page->host()->size(), w.page->host()->parentWidget()->size());
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
