#include "EngineWorld.h"

#include <QtTest>

using namespace Qt::StringLiterals;

/// Which navigations the engine reports, with which titles and addresses; windows that
/// pages open, resize and close, and engines that go at any moment.
class EngineVisitsTest : public EngineTest {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        m_world.server.page(u"/start"_s,
                            "<title>Start</title><a id=a href=/target target=_blank>x</a>");
        m_start = u"/start"_s;
        m_world.server.page(u"/end"_s, "<title>Ende</title>");
        m_world.server.page(u"/plain"_s, "<title>Frame</title>");
        m_world.server.answer(
            u"/half"_s, {.body = "<title>Halb</title>" + QByteArray(9000, ' '), .sent = 8000});
        m_world.server.page(u"/target"_s, "<title>Ziel</title><body style='background:#0000ff'>");
        m_world.server.page(u"/home"_s, "<title>Heim</title>");
    }
    void init()
    {
        EngineTest::init();
        m_window->makeWindow = [this] {
            m_lent = m_world.open();
            m_lent->visit(u"/home"_s); // must not win
            connect(&m_lent->engine(), &EngineControl::BeforeNavigate2, m_lent,
                    [this] { m_nameWhenBusy = m_lent->engine().LocationName(); });
            return m_lent;
        };
    }

    void answers()
    {
        const auto check = [this](const LoopbackServer::Answer& answer,
                                  const QStringList& expected) {
            cleanup();
            init();
            m_world.server.answer(u"/page"_s, answer);
            m_window->visit(u"/page"_s);
            expectExactly(expected);
        };
        const QStringList titled{u"Titel @ H/page"_s};
        const QByteArray page = "<title>Titel</title>";
        const QByteArray frames = "<iframe src=/plain></iframe><iframe></iframe>"
                                  "<iframe srcdoc=x></iframe><iframe src=/plain?2></iframe>";
        check({.body = page + frames},
              {u"Frame @ H/plain"_s, u"Frame @ H/plain?2"_s, u"Titel @ H/page"_s});
        check({.body = page + "<iframe src='http://127.0.0.1:1/'></iframe>"}, titled);
        check({.body = "Text", .type = "text/plain"}, {u" @ H/page"_s});
        check({.status = 302, .headers = "Location: /plain\r\n"}, {u"Frame @ H/plain"_s});
        check({.body = page, .status = 404}, titled);
        check({.status = 404}, {u"- @ H/page"_s});
        check({.status = 204}, {});
        m_world.shell.fakePrompt.answerFileName({}); // refuses the download
        check({.body = "x",
               .type = "application/octet-stream",
               .headers = "Content-Disposition: attachment; filename=x.bin\r\n"},
              {});
        QCOMPARE(m_world.shell.fakePrompt.takeTexts().size(), 1);
    }

    void movesWithinAPage()
    {
        const auto check = [this](const QString& script, const QStringList& expected) {
            cleanup();
            init();
            m_window->run(script);
            expectExactly(expected);
        };
        check(u"history.pushState(0, '', '/pushed?ä')"_s, {u"Start @ H/pushed?%C3%A4"_s});
        // A new title, then a fragment.
        check(u"document.title = 'Neu'; setTimeout(() => { location.hash = 'x' }, 200)"_s,
              {u"Neu @ H/start#x"_s});
        // The engine announces no second load while the first one is running.
        m_world.server.answer(u"/never"_s, {.status = 0});
        check(u"document.body.innerHTML = '<img src=/never>'; location.hash = 'x';"
              "setTimeout(() => { location.href = '/plain' }, 200)"_s,
              {u"Frame @ H/plain"_s, u"Start @ H/start#x"_s});
    }

    void slowPageReportsWithinASecondAndStops()
    {
        m_window->visit(u"/half"_s);
        QTRY_COMPARE_WITH_TIMEOUT(m_window->visits.mid(1), QStringList{u"Halb @ H/half"_s}, 2500);
        QVERIFY(m_window->engine().Busy());
        m_window->engine().Stop();
        QTRY_VERIFY(!m_window->engine().Busy());
        expectExactly({u"Halb @ H/half"_s});
    }

    void whatIsNoAddress()
    {
        const QString typed = u"<script>document.title='Böse'</script>&=%41\""_s;
        m_window->engine().Navigate(typed);
        QTRY_COMPARE(m_window->visits.mid(1), QStringList{u"- @ "_s + typed});
        QCOMPARE(m_window->engine().LocationURL(), typed);
        QCOMPARE(m_window->engine().LocationName(), u"Keine gültige Adresse"_s);
        m_window->visit(u"/end"_s);
        QTRY_COMPARE(m_window->visits.last(), u"Ende @ H/end"_s);
        m_window->engine().GoBack();
        QTRY_COMPARE(m_window->visits.mid(3), QStringList{u"- @ "_s + typed});
        QCOMPARE(m_window->engine().LocationURL(), typed);
        m_window->engine().Navigate({});
        QTRY_COMPARE(m_window->engine().LocationName(), u"Keine Adresse"_s);
    }

    void deadServerAndEncoding()
    {
        m_window->engine().Navigate(u"http://127.0.0.1:1/ä b"_s.replace(u' ', u"%20"_s));
        QTRY_COMPARE(m_window->visits.mid(1), QStringList{u"- @ http://127.0.0.1:1/%C3%A4%20b"_s});
        QCOMPARE(m_window->engine().LocationURL(), u"http://127.0.0.1:1/%C3%A4%20b"_s);
    }

    void lentPageWins()
    {
        const auto check = [this](const QString& script, const QSize& size) {
            m_lent.clear();
            m_window->run(script);
            QTRY_VERIFY(m_lent);
            QTRY_COMPARE(m_lent->visits, QStringList{u"Ziel @ H/target"_s});
            QTRY_COMPARE(m_lent->colour(), QColor(Qt::blue));
            QTRY_VERIFY(!m_lent->engine().Busy());
            QCOMPARE(m_lent->requestedSize, size);
            QCOMPARE(m_world.server.requests(u"/home"_s), 0);
        };
        check(u"window.open('/target', '', 'width=320,height=210')"_s, {320, 210});
        check(u"document.getElementById('a').click()"_s, {});
        check(u"w = window.open(''); setTimeout(() => { w.location = '/target' }, 50)"_s, {});
    }

    void writtenWindow()
    {
        m_window->run(u"w = window.open(''); setTimeout(() => { w.document.write("
                      "'<title>Text</title><body style=\"background:#00ff00\">') }, 300)"_s);
        QTRY_VERIFY(m_lent);
        QTRY_COMPARE(m_lent->colour(), QColor(Qt::green));
        QTRY_COMPARE(m_lent->engine().LocationName(), u"Text"_s);
        QTRY_COMPARE(m_nameWhenBusy, u"Text"_s); // so that its window takes it up
        QTRY_VERIFY(!m_lent->engine().Busy());
        QCOMPARE(m_lent->visits, QStringList());
        QCOMPARE(m_world.server.requests(u"/home"_s), 0);
    }

    void engineGoes()
    {
        engineGoesDuring(&EngineControl::BeforeNavigate2, {});
        engineGoesDuring(&EngineControl::NavigateComplete2, "<iframe src=/home></iframe>");
        engineGoesDuring(&EngineControl::WindowClosing, "<script>window.close()</script>");
        // The others live on.
        m_window->visit(u"/target"_s);
        QTRY_COMPARE(m_window->visits.last(), u"Ziel @ H/target"_s);
    }

    /// A page that is hidden from the engine reports as ever; left alone it sleeps until it is
    /// wanted.
    void unseenPages()
    {
        m_world.server.page(u"/clock"_s, "<title>Uhr</title><body style='background:#0000ff'>"
                                         "<script>setInterval(() => fetch('/tick'), 100);"
                                         "onbeforeunload = () => false</script>");
        EngineControl& engine = m_window->engine();
        const auto state = [this] { return m_window->view()->page()->lifecycleState(); };
        const auto ticks = [this] { return m_world.server.requests(u"/tick"_s); };
        using State = QWebEnginePage::LifecycleState;
        m_window->visitAndWait(u"/clock"_s);
        click(m_window);
        engine.PageSeen(false);
        QTRY_COMPARE(state(), State::Frozen);
        QTest::qWait(300);
        const int before = ticks();
        QTest::qWait(1000);
        QCOMPARE(ticks(), before);
        engine.PageSeen(true);
        QTRY_VERIFY(ticks() > before + 2);
        engine.PageSeen(false);
        QTRY_COMPARE(state(), State::Frozen);
        QVERIFY(engine.AskToClose());
        QTRY_COMPARE(m_world.prompt.questions.size(), 1);
        QTRY_COMPARE(state(), State::Frozen);
        m_world.prompt.onAsk = [](auto&&...) { return Prompt::Answer{.isAccepted = true}; };
        m_window->visit(u"/half"_s);
        QTRY_COMPARE(m_window->visits.last(), u"Halb @ H/half"_s);
        QTest::qWait(2 * EngineWorld::sleepAfter.count());
        QCOMPARE(state(), State::Active); // it is still loading
    }

    void soundKeepsAPageAwake()
    {
        visit("<body style='height:100vh' onclick=\"const all = new AudioContext(); "
              "const tone = all.createOscillator(); tone.connect(all.destination); "
              "tone.start(0.3); tone.stop(4)\">");
        const QWebEnginePage* const page = m_window->view()->page();
        click(m_window);
        m_window->engine().PageSeen(false);
        QTRY_VERIFY(page->recentlyAudible());
        QTest::qWait(2 * EngineWorld::sleepAfter.count());
        QCOMPARE(page->lifecycleState(), QWebEnginePage::LifecycleState::Active);
        QTRY_COMPARE_WITH_TIMEOUT(page->lifecycleState(), QWebEnginePage::LifecycleState::Frozen,
                                  15000);
    }

private:
    /// Waits for the visits after the start page, in alphabetical order, then for one more page, so
    /// that a visit too many would have come in between.
    void expectExactly(const QStringList& expected)
    {
        const auto sorted = [this] {
            QStringList list = m_window->visits.mid(1);
            list.sort();
            return list;
        };
        QTRY_COMPARE(sorted().join(u'\n'), expected.join(u'\n'));
        QTRY_VERIFY(!m_window->engine().Busy());
        m_window->visit(u"/end"_s);
        QTRY_VERIFY(m_window->visits.last() == u"Ende @ H/end"_s);
        QCOMPARE(m_window->visits.mid(1 + expected.size()), QStringList{u"Ende @ H/end"_s});
    }

    template <typename Signal>
    void engineGoesDuring(Signal signal, const QByteArray& html)
    {
        m_world.server.page(u"/victim"_s, html);
        bool isGone = false;
        m_window->makeWindow = [&] {
            m_lent = m_world.open();
            connect(&m_lent->engine(), signal, this, [&] {
                isGone = true;
                delete std::exchange(m_lent, nullptr);
            });
            return m_lent;
        };
        m_window->run(u"window.open('/victim', '', 'width=300,height=200')"_s);
        QTRY_VERIFY(isGone);
    }

    QPointer<EngineWindow> m_lent;
    QString m_nameWhenBusy;
};

QTEST_MAIN(EngineVisitsTest)
#include "EngineVisitsTest.moc"
