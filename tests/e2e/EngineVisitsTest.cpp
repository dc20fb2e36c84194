#include "EngineWorld.h"

#include <QtTest>

using namespace Qt::StringLiterals;

/// Which navigations the engine reports, with which titles and addresses.
class EngineVisitsTest : public EngineTest {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        m_world.server.page(u"/start"_s, "<title>Start</title>");
        m_start = u"/start"_s;
        m_world.server.page(u"/end"_s, "<title>Ende</title>");
        m_world.server.page(u"/plain"_s, "<title>Frame</title>");
        m_world.server.answer(
            u"/half"_s, {.body = "<title>Halb</title>" + QByteArray(9000, ' '), .sent = 8000});
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
    }

    void deadServerAndEncoding()
    {
        m_window->engine().Navigate(u"http://127.0.0.1:1/ä b"_s.replace(u' ', u"%20"_s));
        QTRY_COMPARE(m_window->visits.mid(1), QStringList{u"- @ http://127.0.0.1:1/%C3%A4%20b"_s});
        QCOMPARE(m_window->engine().LocationURL(), u"http://127.0.0.1:1/%C3%A4%20b"_s);
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
};

ENGINE_TEST_MAIN(EngineVisitsTest)
#include "EngineVisitsTest.moc"
