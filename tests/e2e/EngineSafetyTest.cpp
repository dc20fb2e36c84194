#include "EngineWorld.h"

#include "tests/Files.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QtTest>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

/// Each way of reading leaves a line in `got`.
const QByteArray reader = R"(<title>Liest</title><link rel=stylesheet href=style.css>
<body style='margin:0'><img id=picture src=picture.svg><iframe id=frame src=secret.txt></iframe>
<script>
const got = [], had = (way, what) => { got.push(way + ': ' + what); };
onerror = text => { had('error', text); };
const request = new XMLHttpRequest();
request.onload = () => { had('xhr', request.responseText); };
request.open('GET', 'secret.txt');
request.send();
fetch('secret.txt').then(answer => answer.text()).then(text => { had('fetch', text); }, () => {});
const window2 = open('secret.txt');
onload = () => {
    const tries = {
        frame: () => frame.contentDocument.body.innerText,
    };
    setTimeout(() => { try { had('window', window2.document.body.innerText) } catch {} }, 700);
    for (const way in tries) { try { had(way, tries[way]()); } catch {} }
    document.title = 'Breite ' + picture.naturalWidth + getComputedStyle(document.body).color;
};
</script><script src=secret.txt></script>)";

const QByteArray sound = R"(<script>
const audio = new Audio('data:audio/wav;base64,UklGRkMDAABXQVZFZm10IBAAAAABAAEAQB8AAEAfAAAB' +
                        'AAgAZGF0YR8DAACA' + 'gICA'.repeat(266));
const play = () => { audio.play().then(() => { document.title = 'spielt'; },
                                       error => { document.title = error.name; }); };
onclick = play; play();
</script>)";

} // namespace

/// What pages try that is none of their business.
class EngineSafetyTest : public EngineTest {
    Q_OBJECT
private slots:
    void localPagesReadNoOtherFile()
    {
        const QTemporaryDir folder;
        writeBytes(folder.filePath(u"secret.txt"_s), "GEHEIM");
        writeBytes(folder.filePath(u"style.css"_s), "body { color: #010203 }");
        writeBytes(folder.filePath(u"picture.svg"_s),
                   "<svg xmlns='http://www.w3.org/2000/svg' width='17' height='9'/>");
        writeBytes(folder.filePath(u"page.html"_s), reader);
        m_window->makeWindow = [this] { return m_world.open(); };
        m_window->engine().Navigate(
            QUrl::fromLocalFile(folder.filePath(u"page.html"_s)).toString());
        QTRY_COMPARE(m_window->engine().LocationName(), u"Breite 17rgb(1, 2, 3)"_s);
        QTest::qWait(1500);
        QCOMPARE(valueOf(u"got.join()"_s), u"error: Script error."_s);
    }

    void menuOpensNoLocalFile()
    {
        visit("<a href='file:///etc/passwd'><p style='height:900px'>x</p></a>");
        QStringList items = menuItems();
        QCOMPARE(items, QStringList{u"mn_CopyLinkAddress"_s});
        QString status;
        connect(&m_window->engine(), &EngineControl::StatusTextChange, &m_window->engine(),
                [&](const QString& text) { status = text; });
        click(m_window);
        QTRY_COMPARE(status, u"Seiten aus dem Netz öffnen keine Dateien dieses Rechners."_s);
        const QTemporaryDir folder;
        writeBytes(folder.filePath(u"page.html"_s),
                   "<body style='background:#0000ff'><a href=other.html>"
                   "<p style='height:900px'>x</p></a>");
        m_window->engine().Navigate(folder.filePath(u"page.html"_s).prepend(u"file://"_s));
        QTRY_COMPARE(m_window->visits.size(), 2);
        items = menuItems();
        QVERIFY(items.contains(u"mn_OpenLink"_s) && items.contains(u"mn_OpenLinkInWindow"_s));
    }

    void linksAreShownEncoded()
    {
        QString status;
        connect(&m_window->engine(), &EngineControl::StatusTextChange, this,
                [&](const QString& text) { status = text; });
        visit("<a id=a><p style='height:900px'>x</p></a>");
        int x = 100;
        const auto check = [&](const QString& link, const QString& shown) {
            m_window->run(u"document.getElementById('a').href = '%1'"_s.arg(link));
            QTRY_VERIFY(
                (QTest::mouseMove(m_window->view()->focusProxy(), QPoint(++x, 100)), true) &&
                status == shown);
        };
        check(u"http://\u0430pple.com/%E2%80%AEgpj.exe?a=%20b#\u00f6"_s,
              u"http://xn--pple-43d.com/%E2%80%AEgpj.exe?a=%20b#%C3%B6"_s);
        check(u"data:,"_s + QString(900000, u'x'), u"data:,"_s + QString(4090, u'x') + u'…');
        QLineEdit other(&m_world.frame);
        other.show();
        other.setFocus();
        QCOMPARE(status, QString());
    }

    void soundWaitsForAClick()
    {
        visit(sound);
        QTRY_COMPARE(m_window->engine().LocationName(), u"NotAllowedError"_s);
        click(m_window);
        QTRY_COMPARE(m_window->engine().LocationName(), u"spielt"_s);
    }

    void cookiesOfThirdParties()
    {
        const QString other = m_world.server.address({}, u"localhost"_s);
        m_world.server.answer(u"/third"_s,
                              {.headers = "Set-Cookie: a=1; SameSite=None; Secure\r\n"});
        m_world.server.answer(u"/own"_s, {.headers = "Set-Cookie: b=2\r\n"});
        m_world.server.page(u"/page"_s, "<img src=/own><img src=" + other.toLatin1() + "/third>");
        for (int i = 0; i < 2; ++i) {
            m_window->visitAndWait(u"/page"_s);
            QTRY_COMPARE(m_world.server.requests(u"/third"_s), i + 1);
        }
        QVERIFY(m_world.server.lastRequest(u"/own"_s).contains("Cookie: b=2"));
        QVERIFY(!m_world.server.lastRequest(u"/third"_s).contains("Cookie:"));
    }

    void logInsByOtherSites()
    {
        const QByteArray other = m_world.server.address({}, u"localhost"_s).toLatin1();
        const QByteArray own = m_world.server.address({}).toLatin1();
        const auto redirect = [this](const QString& path, const QByteArray& to,
                                     const QByteArray& headers) {
            m_world.server.answer(path,
                                  {.status = 302, .headers = "Location: " + to + "\r\n" + headers});
        };
        // There and back by redirects; the other site knows its user from before.
        redirect(u"/app"_s, other + "/login", {});
        redirect(u"/login"_s, other + "/known", "Set-Cookie: user=anna\r\n");
        redirect(u"/known"_s, own + "/code", {});
        redirect(u"/code"_s, "/home", "Set-Cookie: session=1\r\n");
        m_world.server.page(u"/home"_s, "<title>Zuhause</title>");
        m_window->visit(u"/app"_s);
        QTRY_COMPARE(m_window->engine().LocationName(), u"Zuhause"_s);
        QVERIFY(m_world.server.lastRequest(u"/known"_s).contains("user=anna"));
        QVERIFY(m_world.server.lastRequest(u"/home"_s).contains("session=1"));
        // The other site's page sends a form back.
        m_world.server.page(u"/idp"_s, "<form method=post action=" + own +
                                           "/assert><input name=t value=1></form>"
                                           "<script>document.forms[0].submit()</script>");
        redirect(u"/assert"_s, "/home2", "Set-Cookie: saml=1\r\n");
        m_world.server.page(u"/home2"_s, "<title>Zweitens</title>");
        m_window->engine().Navigate(QString::fromLatin1(other) + u"/idp"_s);
        QTRY_COMPARE(m_window->engine().LocationName(), u"Zweitens"_s);
        QVERIFY(m_world.server.lastRequest(u"/home2"_s).contains("saml=1"));
    }

    void clipboardTakesWhatAClickGives()
    {
        const QString kept = u"vorher"_s;
        QGuiApplication::clipboard()->setText(kept);
        visit("<script>let read = 0; const copy = text => {"
              "  document.oncopy = e => { e.preventDefault();"
              "                           e.clipboardData.setData('text/plain', text); };"
              "  document.execCommand('copy'); navigator.clipboard.writeText(text)"
              "    .then(() => { document.title = text }, () => { document.title = 'nein' });"
              "  navigator.clipboard.readText().then(() => { ++read }, () => {});"
              "  document.execCommand('paste') && ++read; };"
              "onclick = () => { copy('geklickt') }; setTimeout(() => { copy('allein') }, 500)"
              "</script>");
        QTRY_COMPARE(m_window->engine().LocationName(), u"nein"_s);
        QCOMPARE(QGuiApplication::clipboard()->text(), kept);
        click(m_window);
        QTRY_COMPARE(QGuiApplication::clipboard()->text(), u"geklickt"_s);
        QTRY_COMPARE(m_window->engine().LocationName(), u"geklickt"_s);
        QCOMPARE(valueOf(u"'' + read"_s), u"0"_s);
        QTest::qWait(6000); // the click is long ago
        m_window->run(u"copy('später')"_s);
        QTRY_COMPARE(m_window->engine().LocationName(), u"nein"_s);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"geklickt"_s);
    }

    void whichPagesWereSentAsForms()
    {
        const auto asks = [this] {
            m_world.prompt.questions.clear();
            m_window->engine().Refresh();
            QTest::qWait(700);
            return !m_world.prompt.questions.isEmpty();
        };
        const auto shows = [this](const QString& title) {
            QTRY_COMPARE(m_window->engine().LocationName(), title);
        };
        m_world.server.answer(u"/done"_s, {.body = "<title>Fertig</title>",
                                           .headers = "Cache-Control: no-store\r\n"});
        m_world.server.answer(u"/moves"_s, {.status = 303, .headers = "Location: /plain\r\n"});
        m_world.server.page(u"/plain"_s, "<title>Frei</title>");
        visit("<form method=post action=/done></form>");
        QVERIFY(!asks());
        m_window->run(u"document.forms[0].submit()"_s);
        shows(u"Fertig"_s);
        QVERIFY(asks());
        m_window->visit(u"/plain"_s);
        shows(u"Frei"_s);
        QVERIFY(!asks());
        // Going back sends nothing, and what then stands there is asked about, too.
        m_window->engine().GoBack();
        QTest::qWait(700);
        QCOMPARE(m_world.server.requests(u"/done"_s), 1);
        m_world.prompt.onAsk = [](QWidget*, const Prompt::Question& question) {
            return Prompt::Answer{.isAccepted = question.isRisky};
        };
        QVERIFY(asks());
        shows(u"Fertig"_s);
        QCOMPARE(m_world.server.requests(u"/done"_s), 2);
        // An address of the page's own, and a redirect, stand for pages that nobody sent.
        valueOf(u"history.replaceState(0, '', location.href)"_s);
        QTest::qWait(300);
        QVERIFY(!asks());
        visit("<form method=post action=/moves></form><script>document.forms[0].submit()</script>");
        shows(u"Frei"_s);
        QVERIFY(!asks());
    }

    void aHangingPageInheritsNoSafety()
    {
        using Kind = PageSafety::Kind;
        LoopbackServer secured;
        secured.useTls(QFINDTESTDATA("localhost.pem"));
        secured.page(u"/fine"_s, "<title>Gut</title>");
        const QByteArray hang = "<title>Endlos</title>x<script>for (;;);</script>";
        secured.page(u"/hang"_s, hang);
        m_world.server.page(u"/hang"_s, hang);
        m_world.prompt.onAsk = [](QWidget*, const Prompt::Question&) {
            return Prompt::Answer{.isAccepted = true};
        };
        Kind told = Kind::Unknown;
        EngineControl& engine = m_window->engine();
        connect(&engine, &EngineControl::SafetyChange, this, [&] { told = engine.Safety().kind; });
        for (const auto& [address, kind] :
             {std::pair{m_world.server.address(u"/hang"_s), Kind::Local},
              {secured.address(u"/hang"_s, u"localhost"_s), Kind::Unknown}}) {
            engine.Navigate(secured.address(u"/fine"_s));
            QTRY_COMPARE(told, Kind::SecuredByException);
            engine.Navigate(address);
            QTRY_COMPARE(told, kind);
            QTest::qWait(1500); // all others have reported themselves by now
            QCOMPARE(told, kind);
            ::kill(static_cast<pid_t>(m_window->view()->page()->renderProcessPid()), SIGKILL);
        }
        engine.disconnect(this);
    }

private:
    QStringList menuItems()
    {
        click(m_window, Qt::RightButton);
        QMenu* menu = nullptr;
        if (!QTest::qWaitFor(
                [&] { return (menu = m_window->findChild<QMenu*>(u"mn_Page"_s)) != nullptr; }))
            return {u"kein Menü"_s};
        QStringList names;
        const QList<QAction*> items = menu->actions();
        for (const QAction* item : items)
            names << item->objectName();
        menu->close();
        QTest::qWait(50); // it goes
        return names;
    }
    QString valueOf(const QString& script)
    {
        std::optional<QString> value;
        m_window->view()->page()->runJavaScript(
            script, [&](const QVariant& result) { value = result.toString(); });
        (void)QTest::qWaitFor([&] { return value.has_value(); });
        return value.value_or(u"keine Antwort"_s);
    }
};

QTEST_MAIN(EngineSafetyTest)
#include "EngineSafetyTest.moc"
