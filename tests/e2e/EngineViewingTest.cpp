#include "EngineWorld.h"

#include "bookmarks/ExportFormats.h"
#include "engine/viewing/PageInspector.h"
#include "engine/viewing/PagePrinter.h"
#include "pages/viewing/CrashOverlay.h"
#include "pages/viewing/FindBar.h"
#include "pages/viewing/HangNotice.h"
#include "tests/Files.h"
#include "tests/core/SampleArchive.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTcpServer>
#include <QTcpSocket>

#include <csignal>

using namespace Qt::StringLiterals;

/// Before the engine starts: else it describes its pages to nobody.
[[maybe_unused]] const bool isAssisted = qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");

/// What users do with a page of the real engine.
class EngineViewingTest : public EngineTest {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        m_world.server.page(u"/page"_s, "<title>Seite</title><body style='height:100vh' onclick="
                                        "'this.requestFullscreen()'>Wort wort wort");
        m_world.server.page(u"/next"_s, "<title>Nächste</title>wort");
        m_start = u"/page"_s;
    }
    void init()
    {
        EngineTest::init();
        m_host = m_window->view();
        m_page = m_host->page();
        QTRY_VERIFY(m_window->isActiveWindow());
    }

    void assistiveToolsSeeThePage()
    {
        QAccessibleInterface* const view = QAccessible::queryAccessibleInterface(m_host);
        QTRY_VERIFY(view->childCount() == 1 && view->child(0)->childCount() > 0);
        QCOMPARE(view->child(0)->text(QAccessible::Name), u"Seite"_s);
    }

    void savesAPdf()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(u"seite.pdf"_s);
        writeBytes(file, {}); // its name without suffix is asked about again
        m_world.shell.fakePrompt.answerFileName(folder.filePath(u"seite"_s));
        m_world.shell.fakePrompt.answerFileName(file);
        m_page->findChild<PagePrinter*>()->savePdf();
        QTRY_VERIFY(bytesOf(file).startsWith("%PDF") && bytesOf(file).contains("%%EOF"));
        QCOMPARE(m_world.shell.fakePrompt.takeTexts().size(), 2);
        QTRY_COMPARE(m_world.shell.status, u"Als PDF gespeichert: "_s + file);
        m_world.shell.fakePrompt.answerFileName(folder.filePath(u"nirgends/seite.pdf"_s));
        m_page->findChild<PagePrinter*>()->savePdf();
        QTRY_COMPARE(m_world.shell.status, u"Die Seite ist nicht als PDF gespeichert."_s);
        QCOMPARE(m_world.shell.fakePrompt.takeTexts().size(), 2);
    }
    void crashesWhileSavingAPdf()
    {
        const QTemporaryDir folder;
        m_world.shell.fakePrompt.answerFileName(folder.filePath(u"seite.pdf"_s));
        ::kill(pid_t(m_page->renderProcessPid()), SIGSTOP); // else it is done at once
        m_page->findChild<PagePrinter*>()->savePdf();
        QCOMPARE(m_world.shell.status, u"Die Seite wird als PDF gespeichert..."_s);
        ::kill(pid_t(m_page->renderProcessPid()), SIGKILL);
        QTRY_COMPARE(m_world.shell.status, u"Die Seite ist nicht als PDF gespeichert."_s);
        QTest::qWait(300);
        QCOMPARE(m_world.shell.fakePrompt.takeTexts().size(), 1); // and no message
    }

    /// Their answer to the press of their own closing button comes after their wish to close.
    void theToolsAreThereUntilTheyHaveAnswered()
    {
        m_page->findChild<PageInspector*>()->toggle();
        const QWidgetList windows = QApplication::topLevelWidgets();
        const auto found = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
            return window->objectName() == "Inspector"_L1;
        });
        QVERIFY(found != windows.end());
        const QPointer<QWebEngineView> tools = qobject_cast<QWebEngineView*>(*found);
        emit tools->page()->windowCloseRequested();
        QVERIFY(tools->isVisible());
        QTRY_VERIFY(!tools);
    }

    void crashesWhilePrinting()
    {
        m_page->findChild<PagePrinter*>()->print();
        const QPointer<QWidget> dialog = m_window->window()->findChild<QWidget*>(u"frmPrint"_s);
        QVERIFY(dialog && dialog->isVisible());
        ::kill(pid_t(m_page->renderProcessPid()), SIGKILL);
        QTRY_VERIFY(!dialog);
        const auto* reason = m_window->window()->findChild<QLabel*>(u"lblReason"_s);
        QTRY_VERIFY(reason->text().endsWith(u"wurde unerwartet beendet (Signal 9)."_s));
    }

    void fullScreen()
    {
        const auto endsBy = [this](const auto& end) {
            m_window->visitAndWait(u"/page"_s);
            const QRect place = m_host->geometry();
            enterFullScreen();
            end();
            QTRY_VERIFY(screen() == nullptr);
            QCOMPARE(m_host->page(), m_page);
            QCOMPARE(m_host->geometry(), place);
            if (m_host->focusProxy() != nullptr) // the crash leaves none
                QTRY_COMPARE(QApplication::focusWidget(), m_host->focusProxy());
        };
        endsBy([this] { QTest::keyClick(screen(), Qt::Key_Escape); });
        endsBy([this] { screen()->close(); });
        endsBy([this] { m_page->runJavaScript(u"document.exitFullscreen()"_s); });
        endsBy([this] {
            m_page->runJavaScript(u"location = '/next'"_s);
            QTRY_COMPARE(m_window->visits.last(), u"Nächste @ H/next"_s);
        });
        endsBy([this] { ::kill(pid_t(m_page->renderProcessPid()), SIGKILL); });
    }
    void windowGoesInFullScreen()
    {
        enterFullScreen();
        const QPointer<QWebEnginePage> page = m_page;
        delete m_window;
        QVERIFY(screen() == nullptr);
        QTRY_VERIFY(page.isNull());
    }

    void exportsAreShownInTheirEncoding()
    {
        const QString text = u"ÄÖÜäöüß€"_s; // Arabic, guesses the engine
        Book book(QDir::tempPath());
        const auto folder = addThema(book, QDir::tempPath(), 1, u"A"_s);
        folder->colBookmark(std::make_shared<BookmarkCollection>());
        folder->colBookmark()->Add(makeBookmark(1, u"a"_s, u"http://a/"_s, text));
        const ExportTime now{QDateTime::currentDateTime(), QLocale()};
        const QTemporaryDir files;
        int number = 0;
        for (const QByteArray& bytes :
             {exportFolderText(*folder), exportArchiveText(book), exportFolderHtml(*folder),
              exportArchiveHtml(book), exportFolderNetscape(*folder, now),
              exportArchiveNetscape(book, now),
              text.toUtf8() + ": " + exportFolderText(*folder).left(40)}) {
            const QString name = files.filePath(QString::number(++number));
            const QString file = name + (bytes.startsWith('<') ? u".htm"_s : u".txt"_s);
            writeBytes(file, bytes);
            m_window->engine().Navigate(QUrl::fromLocalFile(file).toString());
            QTRY_VERIFY(m_window->visits.last().endsWith(file) && !m_window->engine().Busy());
            QTRY_VERIFY2(shownText().contains(text), qPrintable(file));
        }
    }

    void find()
    {
        m_host->setFocus();
        QTest::keyClick(m_window, Qt::Key_F, Qt::ControlModifier);
        auto* const bar = m_window->findChild<FindBar*>();
        QVERIFY(bar);
        QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(bar);
        QVERIFY(told->parent()->indexOfChild(told) >= 0); // found from above, too
        const auto* const hits = bar->findChild<QLabel*>(u"lblHits"_s);
        QTest::keyClicks(bar->findChild<QLineEdit*>(), u"wort"_s);
        QTRY_COMPARE(hits->text(), u"1 von 3"_s);
        QTest::keyClick(m_window, Qt::Key_F3);
        QTRY_COMPARE(hits->text(), u"2 von 3"_s);
        QTest::keyClick(bar->findChild<QLineEdit*>(), Qt::Key_Enter,
                        Qt::ShiftModifier | Qt::KeypadModifier);
        QTRY_COMPARE(hits->text(), u"1 von 3"_s);
        QTest::keyClick(bar->findChild<QWidget*>(u"chkCase"_s), Qt::Key_Space);
        QTRY_VERIFY(hits->text().endsWith(u" von 2"_s));
        m_window->visitAndWait(u"/next"_s);
        QTRY_COMPARE(hits->text(), u"1 von 1"_s);
    }

    void zoomBelongsToTheSite()
    {
        // A page that says for each picture how large it is.
        m_world.server.page(u"/size"_s, "<script>(function tell() {"
                                        "document.title = devicePixelRatio.toFixed(1);"
                                        "requestAnimationFrame(tell) })()</script>");
        const QString elsewhere = m_world.server.address(u"/size"_s, u"localhost"_s);
        EngineWindow* const other = m_world.open(u"/next"_s);
        QPointer<EngineWindow> popup;
        other->makeWindow = [&] { return popup = m_world.open(); };
        m_host->setFocus();
        QTest::keyClick(m_window, Qt::Key_Plus, Qt::ControlModifier);
        QTest::keyClick(m_window, Qt::Key_Plus, Qt::ControlModifier);
        QTRY_COMPARE(other->view()->zoomFactor(), 1.25);
        m_window->raise(); // what is covered is not painted
        m_window->engine().Navigate(elsewhere);
        QTRY_COMPARE(m_window->view()->title(), u"1.0"_s);
        m_window->visit(u"/size"_s);
        QTRY_COMPARE(m_window->view()->title(), u"1.3"_s);
        m_window->engine().GoBack();
        QTRY_COMPARE(m_window->view()->title(), u"1.0"_s);
        other->run(u"open('/size')"_s);
        QVERIFY(comesToHold([&] { return !popup.isNull(); }));
        QTRY_COMPARE(popup->view()->title(), u"1.3"_s);
        QTest::keyClick(popup, Qt::Key_0, Qt::ControlModifier);
        QTRY_COMPARE(other->view()->zoomFactor(), 1.0);
        QCOMPARE(popup->view()->zoomFactor(), 1.0);
    }

    void hanging_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("arrival");
        const QByteArray forEver = "for (;;);";
        QTest::newRow("answers again")
            << "for (const end = Date.now() + 8000; Date.now() < end;);"_ba << QString()
            << QString();
        QTest::newRow("left") << forEver << m_world.server.address(u"/next"_s)
                              << u"Nächste @ H/next"_s;
        QTest::newRow("left for another site")
            << forEver << m_world.server.address(u"/next"_s, u"localhost"_s)
            << u"Nächste @ "_s + m_world.server.address(u"/next"_s, u"localhost"_s);
    }
    void hanging()
    {
        QFETCH(const QByteArray, script);
        QFETCH(const QString, address);
        QFETCH(const QString, arrival);
        const auto* const notice = noticeAfter(QString::fromLatin1(script));
        QVERIFY(notice != nullptr);
        QCOMPARE(QApplication::focusWidget(), notice->findChild<QWidget*>(u"cmdWait"_s));
        if (!address.isEmpty())
            m_window->engine().NavigateTyped(address);
        QTRY_VERIFY_WITH_TIMEOUT(notice->isHidden(), 10000);
        QTRY_VERIFY(!m_window->findChild<CrashOverlay*>()->isVisible());
        if (!arrival.isEmpty())
            QTRY_COMPARE(m_window->visits.last(), arrival);
    }
    void endsAHangingPageThatIsBeingLeft()
    {
        QTcpServer server;
        bool isSilent = true; // so long the page stays
        connect(&server, &QTcpServer::newConnection, this, [&] {
            QTcpSocket* const socket = server.nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [&isSilent, socket] {
                if (!isSilent)
                    socket->write("HTTP/1.0 200 OK\r\nContent-Type: text/html\r\n"
                                  "Content-Length: 16\r\n\r\n<title>S</title>");
            });
        });
        QVERIFY(server.listen(QHostAddress::LocalHost));
        m_page->runJavaScript(u"for (;;);"_s);
        m_window->engine().NavigateTyped(u"http://127.0.0.1:%1/"_s.arg(server.serverPort()));
        const auto* const notice = shownNotice(m_window);
        QVERIFY(notice != nullptr);
        isSilent = false;
        notice->findChild<QPushButton*>(u"cmdEnd"_s)->click();
        QTRY_VERIFY(m_window->visits.last().startsWith(u"S @ "_s));
    }
    void hangsTogether()
    {
        EngineWindow* other = nullptr;
        m_window->makeWindow = [&] { return other = m_world.open(); };
        m_window->run(u"open('/next')"_s);
        QTRY_VERIFY(other != nullptr && !other->visits.isEmpty());
        m_window->raise();
        m_host->setFocus();
        const auto* const notice = noticeAfter(u"for (;;);"_s);
        QVERIFY(notice != nullptr);
        QVERIFY(notice->findChild<QLabel*>(u"lblMore"_s)->text().contains(u"„Nächste“"_s));
        const auto* const others = shownNotice(other);
        QVERIFY(others != nullptr);
        others->findChild<QPushButton*>(u"cmdEnd"_s)->click();
        for (const EngineWindow* const window : {m_window.get(), other}) {
            const auto* const overlay = window->findChild<CrashOverlay*>();
            QTRY_VERIFY(overlay->isVisible());
            const auto* const reason = overlay->findChild<QLabel*>(u"lblReason"_s);
            QVERIFY(reason->text().endsWith(u"Sie haben ihn beendet."_s));
        }
    }
    void aQuestionIsNoHang()
    {
        const QString waiting = u"setTimeout(() => alert('x'), 100)"_s;
        m_world.prompt.onAsk = [](QWidget*, const Prompt::Question&) {
            QTest::qWait(7000);
            return Prompt::Answer{};
        };
        QVERIFY(noticeAfter(waiting) == nullptr);
        QCOMPARE(m_world.prompt.questions.size(), 1);
    }

    void sound()
    {
        m_window->visitAndWait(page("<script>onclick = () => { const sound = new AudioContext();"
                                    "const tone = sound.createOscillator();"
                                    "tone.connect(sound.destination); tone.start() }</script>"));
        using enum EngineControl::Sound;
        EngineControl::Sound heard = None;
        connect(&m_window->engine(), &EngineControl::SoundChange, this,
                [&](EngineControl::Sound sound) { heard = sound; });
        click(m_window);
        QTRY_COMPARE(heard, Playing);
        choose(u"mn_SoundOff"_s);
        QTRY_COMPARE(heard, Silenced);
        choose(u"mn_SoundOn"_s);
        QTRY_COMPARE(heard, Playing);
    }

private:
    QString shownText()
    {
        QString shown;
        m_page->toPlainText([&shown](const QString& text) { shown = text; });
        (void)comesToHold([&shown] { return !shown.isEmpty(); });
        return shown;
    }
    static HangNotice* shownNotice(const EngineWindow* window)
    {
        HangNotice* notice = nullptr;
        (void)QTest::qWaitFor(
            [&] {
                notice = window->findChild<HangNotice*>();
                return notice != nullptr && notice->isVisible();
            },
            9000);
        return notice;
    }
    /// What is to be seen when the user types into the page while a script runs in it.
    HangNotice* noticeAfter(const QString& script)
    {
        m_host->setFocus();
        m_page->runJavaScript(script);
        QTest::keyClick(m_host->focusProxy(), Qt::Key_A);
        return shownNotice(m_window);
    }
    /// Chooses an item of the page's menu.
    void choose(const QString& item)
    {
        click(m_window, Qt::RightButton);
        QMenu* menu = nullptr;
        QTRY_VERIFY((menu = m_host->findChild<QMenu*>(u"mn_Page"_s)) != nullptr);
        auto* const action = menu->findChild<QAction*>(item);
        QVERIFY(action != nullptr);
        action->trigger();
        menu->close();
        QTRY_VERIFY(m_host->findChild<QMenu*>(u"mn_Page"_s) == nullptr);
    }
    QWidget* screen() const
    {
        return m_window ? m_window->findChild<QWidget*>(u"FullScreen"_s) : nullptr;
    }
    void enterFullScreen()
    {
        QTRY_VERIFY(m_host->focusProxy() != nullptr);
        // A page takes clicks only some time after it says that it is loaded.
        for (int i = 0; i < 10 && screen() == nullptr; ++i) {
            QTest::mouseClick(m_host->focusProxy(), Qt::LeftButton);
            (void)QTest::qWaitFor([this] { return screen() != nullptr; }, 500);
        }
        QVERIFY(screen() != nullptr);
        QTRY_VERIFY(screen()->isActiveWindow());
        QTRY_COMPARE(screen()->geometry(), screen()->screen()->geometry());
    }

    QPointer<QWebEngineView> m_host;
    QWebEnginePage* m_page = nullptr;
};

QTEST_MAIN(EngineViewingTest)
#include "EngineViewingTest.moc"
