#include "tests/e2e/Scenario.h"

#include <QtTest>

#include <csignal>

using namespace Qt::StringLiterals;

/// Pages that ask at the wrong moment, or more than is good for their user.
class AskingScenarioTest : public Scenario {
    Q_OBJECT
private slots:
    // In full screen a question could not be seen, nor the full screen be left any more.
    void questionsEndFullScreen_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QString>("question");
        const auto row = [](const char* name, const char* script, const QString& question) {
            QTest::newRow(name) << QByteArray(script) << question;
        };
        row("permission", "navigator.geolocation.getCurrentPosition(() => {})", u"Erlaubnis"_s);
        row("download", "location = '/file'", u"Datei speichern unter"_s);
        row("log-in", "fetch('/cellar')", u"Anmeldung"_s);
        row("message", "alert('x')", {});
        row("print", "print()", u"Drucken"_s);
        row("the program's", "", u"Meldung"_s);
    }
    void questionsEndFullScreen()
    {
        QFETCH(const QByteArray, script);
        QFETCH(QString, question);
        if (question.isEmpty())
            question = m_server->address({});
        const bool isOurs = script.isEmpty();
        m_server->answer(u"/cellar"_s, {.body = "<title>Keller</title>", .logIn = "anna:geheim"});
        m_server->answer(u"/file"_s, {.body = QByteArray(90000, 'x'),
                                      .type = "application/octet-stream",
                                      .headers = "Content-Disposition: attachment\r\n",
                                      .sent = 40000});
        m_server->page(u"/film"_s, "<title>Film</title><div id=d style='position:fixed;inset:0;"
                                   "background:#ff0000'></div><script>onclick = () => {"
                                   "d.style.background = '#00ff00'; d.requestFullscreen() };"
                                   "onkeydown = () => {" +
                                       script + "}</script>");
        open(u"/film"_s, u"Film"_s);
        const QRect frame = User::place(maximised(u"Film"_s));
        const QPoint outside = frame.topLeft() + QPoint(20, 8); // the menu bar
        const QColor menuBar = User::colourAt(outside);
        if (isOurs) { // something that the program asks about when it is to end
            User::press(u"ctrl+l"_s);
            User::enter(m_server->address(u"/file"_s));
            QTRY_SEES(u"Datei speichern unter"_s);
            User::enter(m_program->home() + u"/file.bin"_s);
            QTRY_SEES(u"Downloads"_s);
            QTest::qWait(700);
        }
        const QPoint page = frame.center() - QPoint(0, 80); // above the list of the downloads
        User::click(page);
        QTRY_COLOUR(outside, Qt::green);
        if (isOurs)
            ::kill(pid_t(m_run->processId()), SIGTERM);
        else
            User::press(u"a"_s);
        QTRY_SEES(question);
        QTRY_COLOUR(outside, menuBar);
        isOurs ? User::press(u"Tab space"_s) : User::press(u"Escape"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(question), patience);
        QTRY_COLOUR(page, Qt::green); // it is back
    }

    void printsTakeTurns()
    {
        // Both windows print as soon as they are there, and whenever they may.
        const QByteArray page =
            coloured("Stapel", "#0000ff") + "<script>setInterval(() => print(), 300)</script>";
        m_server->page(u"/pile"_s, page);
        m_server->page(u"/start"_s, page + "<script>open('/pile')</script>");
        m_program->start(*m_run, {m_server->address(u"/start"_s)});
        QTRY_SEES(u"Drucken"_s);
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(u"/pile"_s), 1, patience);
        QTest::qWait(2000);
        QCOMPARE(User::count(u"Drucken"_s), 1);
        User::press(u"Escape"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(u"Drucken"_s), patience);
        QTest::qWait(2000);
        QVERIFY(!User::sees(u"Drucken"_s));
        const QRect frame = User::place(title());
        User::click({frame.center().x(), frame.bottom() - 50});
        QTRY_SEES(u"Drucken"_s); // the page that the user has clicked in
        User::press(u"Escape"_s);
        QTest::qWait(2000);
        QVERIFY(!User::sees(u"Drucken"_s));
    }
};

QTEST_MAIN(AskingScenarioTest)
#include "AskingScenarioTest.moc"
