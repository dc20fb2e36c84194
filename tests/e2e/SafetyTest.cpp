#include "tests/e2e/Scenario.h"

#include <QtTest>

using namespace Qt::StringLiterals;

/// What the address line says of the safety of pages, and what becomes of what is taken back.
class SafetyTest : public Scenario {
    Q_OBJECT
private slots:
    void whatIsSaidOfPages()
    {
        // Names that lead to this computer, and that the engine takes for others.
        m_program->variable("QTWEBENGINE_CHROMIUM_FLAGS",
                            u"--host-resolver-rules=\"MAP *.example 127.0.0.1\""_s);
        writeBytes(m_program->file(u"page.html"_s), coloured("Datei", "#00ff00"));
        open(u"/red"_s, u"Rot"_s);
        QVERIFY(says(u"Auf diesem Rechner"_s));
        for (const auto& [address, title, safety] :
             {std::tuple{m_server->address(u"/blue"_s, u"plain.example"_s), u"Blau"_s,
                         u"Nicht gesichert"_s},
              {m_program->file(u"page.html"_s), u"Datei"_s, u"Auf diesem Rechner"_s},
              {u"view-source:"_s + m_server->address(u"/red"_s, u"plain.example"_s),
               u"view-source:plain.example:%1/red"_s.arg(m_server->serverPort()),
               u"Nicht gesichert"_s},
              {u"zwei Wörter"_s, u"Keine gültige Adresse"_s, u"Auf diesem Rechner"_s},
              {u"https://nowhere.example:1/"_s, u"nowhere.example"_s, u"Keine Angabe"_s}}) {
            goTo(address, title);
            QVERIFY2(says(safety), qPrintable(address));
        }
    }

    void anExceptionIsTakenBack()
    {
        LoopbackServer secured;
        // Of "localhost" and 127.0.0.1, from 2020 to 2068, issued by itself; and its key.
        secured.useTls(QFINDTESTDATA("localhost.pem"));
        secured.page(u"/own"_s, coloured("Eigen", "#00ff00"));
        secured.answer(u"/part"_s, {.body = "0", .headers = "Access-Control-Allow-Origin: *\r\n"});
        m_server->page(u"/with"_s, coloured("Teile", "#0000ff") +
                                       "<script>const show = colour => {"
                                       "document.body.style.background = colour };"
                                       "onkeydown = () => fetch('" +
                                       secured.address(u"/part"_s).toLatin1() +
                                       "').then(() => show('#00ff00'), () => show('#ff0000'))"
                                       "</script>");
        const QString question = u"Unsichere Verbindung"_s;
        open(u"/red"_s, u"Rot"_s);
        const QPoint page = User::place(maximised(u"Rot"_s)).center() + QPoint(0, 150);
        User::typeAddress(secured.address(u"/own"_s));
        QTRY_SEES(question);
        User::press(u"Escape"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(question), patience);
        QTest::qWait(700);
        QVERIFY(says(u"Keine Angabe"_s));
        QCOMPARE(secured.requests(u"/own"_s), 0);
        openByException(secured.address(u"/own"_s));
        // What the page takes back itself, or the user elsewhere, changes the engine's mind as
        // little; so nothing comes from the server any more, whoever wants it.
        takeBackFirst();
        QVERIFY(says(u"Nicht gesichert"_s));
        const int before = secured.requests(u"/own"_s);
        User::press(u"F5"_s);
        QTRY_SEES(question);
        User::press(u"Escape"_s);
        QTRY_SEES(maximised(question)); // the page that says why
        QVERIFY(says(u"Keine Angabe"_s));
        goTo(m_server->address(u"/with"_s), u"Teile"_s);
        User::press(u"a"_s);
        QTRY_COLOUR(page, Qt::red);
        QCOMPARE(secured.requests(u"/part"_s), 0);
        QCOMPARE(secured.requests(u"/own"_s), before);
        openByException(secured.address(u"/own"_s));
        User::press(u"alt+Left"_s);
        QTRY_SEES(maximised(u"Teile"_s));
        QTest::qWait(700);
        User::press(u"a"_s);
        QTRY_COLOUR(page, Qt::green);
    }

    void aPermissionIsTakenBack()
    {
        m_server->page(u"/ask"_s, coloured("Fragt", "#0000ff") +
                                      "<script>const colours = {granted: '#00ff00', "
                                      "denied: '#ff0000', default: '#ffff00'};"
                                      "const show = answer => {"
                                      "document.body.style.background = colours[answer] };"
                                      "onkeydown = e => {"
                                      "if (e.key === 'a') Notification.requestPermission()"
                                      ".then(show);"
                                      "if (e.key === 's') show(Notification.permission) }"
                                      "</script>");
        open(u"/ask"_s, u"Fragt"_s);
        const QPoint page = User::place(maximised(u"Fragt"_s)).center() + QPoint(0, 150);
        User::press(u"a"_s);
        QTRY_SEES(u"Erlaubnis"_s);
        User::press(u"shift+Tab space"_s);
        QTRY_COLOUR(page, Qt::green);
        takeBackFirst();
        User::press(u"s"_s); // the page has the keys again
        QTRY_COLOUR(page, Qt::yellow);
        User::press(u"a"_s);
        QTRY_SEES(u"Erlaubnis"_s);
        User::press(u"Escape"_s);
        QTRY_COLOUR(page, Qt::red);
        // So is a refusal, by the mouse.
        User::press(u"alt+Return"_s);
        const QString panel = u"Sicherheit der Seite: Auf diesem Rechner"_s;
        QTRY_SEES(panel);
        const QRect place = User::place(panel);
        User::press(u"Escape"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(panel), patience);
        User::click(place.topLeft() + QPoint(8, -10)); // the sign
        QTRY_SEES(panel);
        User::press(u"Tab Return Escape"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(panel), patience);
        User::press(u"s"_s);
        QTRY_COLOUR(page, Qt::yellow);
    }

private:
    void goTo(const QString& address, const QString& title)
    {
        User::typeAddress(address);
        QTRY_SEES(maximised(title));
        QTest::qWait(700);
    }
    void openByException(const QString& address)
    {
        User::typeAddress(address);
        QTRY_SEES(u"Unsichere Verbindung"_s);
        User::press(u"shift+Tab space"_s);
        QTRY_SEES(maximised(u"Eigen"_s));
        QVERIFY(says(u"Gesichert durch Ihre Ausnahme"_s));
    }
    /// Whether the panel comes to say this, and goes again.
    static bool says(const QString& safety)
    {
        const QString panel = u"Sicherheit der Seite: "_s + safety;
        User::press(u"alt+Return"_s);
        const bool isSaid = QTest::qWaitFor([&] { return User::sees(panel); }, patience);
        User::press(u"Escape"_s);
        return isSaid && QTest::qWaitFor([&] { return !User::sees(panel); }, patience);
    }
    /// Takes back the first answer in the panel.
    static void takeBackFirst() { User::press(u"alt+Return Tab Return Escape"_s); }
};

QTEST_MAIN(SafetyTest)
#include "SafetyTest.moc"
