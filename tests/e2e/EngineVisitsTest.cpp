#include "EngineWorld.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArray pixel = QByteArray::fromBase64("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADU"
                                                "lEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg==");
const QByteArray pdf =
    "%PDF-1.1\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n2 0 obj<</Type/Pages/Kids[3 0 R]/Count "
    "1>>endobj\n"
    "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]>>endobj\ntrailer<</Root 1 0 R>>\n%%EOF\n";

} // namespace

/// Which navigations the engine reports, with which titles and addresses.
class EngineVisitsTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        m_world = std::make_unique<EngineWorld>();
        m_world->server.page(u"/start"_s, "<title>Start</title>");
        m_world->server.page(u"/end"_s, "<title>Ende</title>");
        m_world->server.page(u"/plain"_s, "<title>Frame</title>");
    }
    void cleanupTestCase()
    {
        m_window.reset();
        m_world.reset();
    }
    void init()
    {
        m_window.reset(m_world->open());
        visit(u"/start"_s);
        QTRY_COMPARE(visits(), QStringList{u"Start @ H/start"_s});
    }

    void answers_data();
    void answers()
    {
        QFETCH(LoopbackServer::Answer, answer);
        QFETCH(QStringList, expected);
        m_world->server.answer(u"/page"_s, answer);
        visit(u"/page"_s);
        expectExactly(expected);
    }

    void movesWithinAPage_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("fragment") << u"location.hash = 'x y'"_s
                                  << QStringList{u"Start @ H/start#x%20y"_s};
        QTest::newRow("pushState") << u"history.pushState(0, '', '/pushed?ä')"_s
                                   << QStringList{u"Start @ H/pushed?%C3%A4"_s};
        QTest::newRow("new title, then a fragment")
            << u"document.title = 'Neu'; setTimeout(() => { location.hash = 'x' }, 200)"_s
            << QStringList{u"Neu @ H/start#x"_s};
        QTest::newRow("title taken away, then a fragment")
            << u"document.title = ''; setTimeout(() => { location.hash = 'x' }, 200)"_s
            << QStringList{u"Start @ H/start#x"_s};
        QTest::newRow("a thousand titles") << u"for (let i = 1; i <= 1000; ++i) document.title = i;"
                                              "setTimeout(() => { location.hash = 'x' }, 300)"_s
                                           << QStringList{u"1000 @ H/start#x"_s};
        QTest::newRow("unknown scheme") << u"location.href = 'foo:bar'"_s << QStringList();
        // The engine announces no second load while the first one is running.
        m_world->server.answer(u"/never"_s, {.status = 0});
        QTest::newRow("fragment, then another page, while an image loads")
            << u"document.body.innerHTML = '<img src=/never>'; location.hash = 'x';"
               "setTimeout(() => { location.href = '/plain' }, 200)"_s
            << QStringList{u"Frame @ H/plain"_s, u"Start @ H/start#x"_s};
        QTest::newRow("another page")
            << u"location.href = '/plain'"_s << QStringList{u"Frame @ H/plain"_s};
    }
    void movesWithinAPage()
    {
        QFETCH(QString, script);
        QFETCH(QStringList, expected);
        QTRY_VERIFY(!m_window->engine().Busy());
        m_window->run(script);
        if (expected.isEmpty()) {
            QTRY_VERIFY(!m_window->engine().Busy());
        }
        expectExactly(expected);
    }

    void backAndReload()
    {
        visit(u"/plain"_s);
        QTRY_COMPARE(visits().last(), u"Frame @ H/plain"_s);
        m_window->engine().GoBack();
        QTRY_COMPARE(visits().mid(2), QStringList{u"Start @ H/start"_s});
        m_window->engine().GoForward();
        QTRY_COMPARE(visits().mid(3), QStringList{u"Frame @ H/plain"_s});
        m_window->engine().Refresh();
        QTRY_COMPARE(visits().mid(4), QStringList{u"Frame @ H/plain"_s});
        QTRY_VERIFY(m_world->server.requests(u"/plain"_s) > 1);
    }

    void stopping_data()
    {
        QTest::addColumn<LoopbackServer::Answer>("answer");
        QTest::addColumn<bool>("isShown");
        const QByteArray body = "<title>Halb</title>" + QByteArray(9000, ' ');
        QTest::newRow("after the commit")
            << LoopbackServer::Answer{.body = body, .sent = 8000} << true;
        QTest::newRow("before it") << LoopbackServer::Answer{.status = 0} << false;
    }
    void stopping()
    {
        QFETCH(LoopbackServer::Answer, answer);
        QFETCH(bool, isShown);
        m_world->server.answer(u"/page"_s, answer);
        const int before = m_world->server.requests(u"/page"_s);
        visit(u"/page"_s);
        QTRY_VERIFY(m_world->server.requests(u"/page"_s) > before);
        if (isShown) {
            QTRY_COMPARE(m_window->engine().LocationName(), u"Halb"_s);
        }
        QVERIFY(m_window->engine().Busy());
        m_window->engine().Stop();
        QTRY_VERIFY(!m_window->engine().Busy());
        expectExactly(isShown ? QStringList{u"Halb @ H/page"_s} : QStringList());
    }

    void navigationAfterStop()
    {
        visit(u"/plain"_s);
        m_window->engine().Stop();
        visit(u"/end"_s);
        QTRY_COMPARE(visits().mid(1), QStringList{u"Ende @ H/end"_s});
    }

    void slowPageReportsWithinASecond()
    {
        m_world->server.answer(
            u"/page"_s, {.body = "<title>Halb</title>" + QByteArray(9000, ' '), .sent = 8000});
        visit(u"/page"_s);
        QTRY_COMPARE_WITH_TIMEOUT(visits().mid(1), QStringList{u"Halb @ H/page"_s}, 2500);
        QVERIFY(m_window->engine().Busy());
    }

    void whatIsNoAddress_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::newRow("empty") << QString();
        QTest::newRow("blanks") << u"   "_s;
        QTest::newRow("blank in the host") << u"http://a b"_s;
        QTest::newRow("no scheme") << u"-"_s;
        QTest::newRow("page source") << u"<script>document.title='Böse'</script>&=%41\""_s;
        QTest::newRow("very long") << QString(100000, u'ä');
    }
    void whatIsNoAddress()
    {
        QFETCH(QString, typed);
        m_window->engine().Navigate(typed);
        QTRY_COMPARE(m_window->visits.mid(1), QStringList{u"- @ "_s + typed});
        QCOMPARE(m_window->engine().LocationURL(), typed);
        QCOMPARE(m_window->engine().LocationName(), u"Keine gültige Adresse"_s);
        QVERIFY(!m_window->engine().Document());
        QCOMPARE(m_window->starts.last(), typed);

        visit(u"/end"_s);
        QTRY_COMPARE(visits().last(), u"Ende @ H/end"_s);
        m_window->engine().GoBack();
        QTRY_COMPARE(m_window->visits.mid(3), QStringList{u"- @ "_s + typed});
        QCOMPARE(m_window->engine().LocationURL(), typed);
    }

    void deadServerAndEncoding()
    {
        m_window->engine().Navigate(u"http://127.0.0.1:1/ä b"_s.replace(u' ', u"%20"_s));
        QTRY_COMPARE(visits().mid(1), QStringList{u"- @ http://127.0.0.1:1/%C3%A4%20b"_s});
        QCOMPARE(m_window->engine().LocationURL(), u"http://127.0.0.1:1/%C3%A4%20b"_s);
    }

private:
    void visit(const QString& path) { m_window->engine().Navigate(m_world->address(path)); }
    QStringList visits() const { return m_world->shortened(m_window->visits); }
    /// Waits for the visits after the start page, in alphabetical order, then for one more page, so
    /// that a visit too many would have come in between.
    void expectExactly(const QStringList& expected)
    {
        const auto sorted = [this] {
            QStringList list = visits().mid(1);
            list.sort();
            return list;
        };
        QTRY_COMPARE(sorted().join(u'\n'), expected.join(u'\n'));
        QTRY_VERIFY(!m_window->engine().Busy());
        visit(u"/end"_s);
        QTRY_VERIFY(visits().last() == u"Ende @ H/end"_s);
        QCOMPARE(visits().mid(1 + expected.size()), QStringList{u"Ende @ H/end"_s});
    }

    std::unique_ptr<EngineWorld> m_world;
    std::unique_ptr<EngineWindow> m_window;
};

void EngineVisitsTest::answers_data()
{
    using Answer = LoopbackServer::Answer;
    QTest::addColumn<Answer>("answer");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char* name, const Answer& answer, const QStringList& expected) {
        QTest::newRow(name) << answer << expected;
    };
    const QStringList titled{u"Titel @ H/page"_s};
    const QStringList untitled{u" @ H/page"_s};
    const QStringList standIn{u"- @ H/page"_s};
    const QByteArray page = "<title>Titel</title>";
    row("titled", {.body = page}, titled);
    row("untitled", {.body = "nur Text"}, untitled);
    row("frames with and without a source",
        {.body = page + "<iframe src=/plain></iframe><iframe></iframe><iframe srcdoc=x></iframe>"
                        "<iframe src=/plain?2></iframe>"},
        {u"Frame @ H/plain"_s, u"Frame @ H/plain?2"_s, u"Titel @ H/page"_s});
    row("sandboxed frame", {.body = page + "<iframe sandbox src=/plain></iframe>"},
        {u"Frame @ H/plain"_s, u"Titel @ H/page"_s});
    const QByteArray foreign = QByteArray("data:text/html,<title>Fremd</title>");
    row("frame of another origin", {.body = page + "<iframe src='" + foreign + "'></iframe>"},
        {u"Fremd @ data:text/html,%3Ctitle%3EFremd%3C/title%3E"_s, u"Titel @ H/page"_s});
    row("frame that cannot be loaded",
        {.body = page + "<iframe src='http://127.0.0.1:1/'></iframe>"}, titled);
    row("frame of another host",
        {.body = page + "<iframe src='" +
                 m_world->server.address(u"/plain"_s, u"localhost"_s).toUtf8() + "'></iframe>"},
        {u"Frame @ L/plain"_s, u"Titel @ H/page"_s});
    row("strict policy",
        {.body = page, .headers = "Content-Security-Policy: default-src 'none'; sandbox\r\n"},
        titled);
    row("image", {.body = pixel, .type = "image/png"}, {u"page (1×1) @ H/page"_s});
    row("drawing",
        {.body = "<svg xmlns='http://www.w3.org/2000/svg'><title>Titel</title></svg>",
         .type = "image/svg+xml"},
        titled);
    row("text", {.body = "Text", .type = "text/plain"}, untitled);
    row("xml", {.body = "<a/>", .type = "text/xml"}, untitled);
    row("pdf", {.body = pdf, .type = "application/pdf"}, untitled);
    row("unnamed encoding",
        {.body = "<title>B\xFC"
                 "cher \x80</title>Viele B\xFC"
                 "cher \xFC"
                 "ber K\xE4se",
         .type = "text/html"},
        {u"Bücher € @ H/page"_s});
    row("redirect", {.status = 302, .headers = "Location: /plain\r\n"}, {u"Frame @ H/plain"_s});
    row("endless redirect", {.status = 302, .headers = "Location: /page\r\n"}, standIn);
    row("404 with a page", {.body = page, .status = 404}, titled);
    row("404 without", {.status = 404}, standIn);
    row("204", {.status = 204}, {});
    row("download",
        {.body = "x",
         .type = "application/octet-stream",
         .headers = "Content-Disposition: attachment; filename=x.bin\r\n"},
        {});
}

ENGINE_TEST_MAIN(EngineVisitsTest)
#include "EngineVisitsTest.moc"
