#include "base/Prefer.h"
#include "tests/core/SampleArchive.h"
#include "tests/e2e/Scenario.h"

#include <QDirIterator>
#include <QtTest>

using namespace Qt::StringLiterals;

/// What pages do to their windows, and ask at the wrong moment or more than is good
/// for their user.
class PagesTest : public Scenario {
    Q_OBJECT
private slots:
    // Those of pages that are shown often come late, and scripts change them.
    void windowsAndBookmarksCarryTheIconsOfPages()
    {
        const auto icon = [](const QByteArray& colour) {
            return "data:image/svg+xml,<svg xmlns=%22http://www.w3.org/2000/svg%22 viewBox="
                   "%220 0 9 9%22><rect width=%229%22 height=%229%22 fill=%22" +
                   colour + "%22/></svg>";
        };
        m_server->page(
            u"/icon"_s,
            "<title>Wiese</title><link id=i rel=icon href='" + icon("blue") +
                "'><script>let n = 0; const timer = setInterval(() => { i.href = `" +
                icon("rgb(${++n % 250},0,0)") +
                "`; if (n > 199) { clearInterval(timer); i.href = `" + icon("lime") +
                "` } })</script><body><a href=/file style='position:fixed;inset:0'></a>");
        m_server->page(u"/still"_s, "<title>See</title><link rel=icon href=aqua>");
        const QByteArray aqua = icon("aqua");
        m_server->answer(u"/aqua"_s,
                         {.body = QByteArray::fromPercentEncoding(aqua.mid(aqua.indexOf('<'))),
                          .type = "image/svg+xml"});
        m_server->answer(u"/file"_s, {.body = "x",
                                      .type = "application/octet-stream",
                                      .headers = "Content-Disposition: attachment\r\n"});
        storeArchive(m_program->file(u"."_s),
                     {{u"Wiese"_s, m_server->address(u"/icon"_s).section(u'/', 2)}});
        open(u"/icon"_s, u"Wiese"_s);
        const QPoint corner = User::place(maximised(u"Wiese"_s)).topLeft() + QPoint(8, 9);
        QTRY_COLOUR(corner, "lime");
        User::press(u"Tab Return"_s); // a download
        QTRY_SEES(u"Datei speichern unter"_s);
        User::press(u"Escape"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(u"Datei speichern unter"_s), patience);
        QTest::qWait(2000);
        QCOMPARE(User::colourAt(corner), QColor("lime"));
        User::typeAddress(m_server->address(u"/still"_s));
        QTRY_COLOUR(corner, "aqua");
        User::press(u"ctrl+w"_s);
        QTRY_SEES(title());
        User::press(u"ctrl+shift+t"_s);
        const QPoint childCorner = User::place(title()).topLeft() + QPoint(13, 32);
        QTRY_COLOUR(childCorner, "aqua");
        User::typeAddress(m_server->address(u"/red"_s));
        QTRY_VERIFY_WITH_TIMEOUT(User::colourAt(childCorner) != QColor("aqua"), patience);
        User::press(u"alt+x b"_s);
        QTRY_SEES(u"Bookmark Archiv"_s);
        User::press(u"Down asterisk"_s);
        QTRY_COLOUR(User::place(u"Bookmark Archiv"_s).topLeft() + QPoint(71, 64), "lime");
        m_run->terminate();
        QVERIFY(hasEnded());
        QDirIterator files(m_program->home() + u"/.local"_s, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext())
            QVERIFY2(!bytesOf(files.next()).contains(m_server->address(u"/icon"_s).toUtf8()),
                     qPrintable(files.filePath()));
    }

    void aLateFrameLeavesTheCaption()
    {
        m_server->page(u"/inner"_s, "<title>Innen</title>");
        m_server->page(u"/outer"_s,
                       "<title>Außen</title><body><script>onclick = () => { const frame = "
                       "document.createElement('iframe'); frame.src = '/inner'; "
                       "document.body.append(frame) }</script>");
        open(u"/outer"_s, u"Außen"_s);
        User::click(User::place(maximised(u"Außen"_s)).center());
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(u"/inner"_s), 1, patience);
        QTest::qWait(700);
        QVERIFY(User::sees(maximised(u"Außen"_s)));
    }

    void consolesAreNotHeard()
    {
        m_server->page(u"/loud"_s, "<title>Laut</title><body><script>setInterval(() => {"
                                   "for (let i = 0; i < 999; ++i) console.error('BRUELL\\x1b[31m');"
                                   "new Image().src = 'file:///x'; new Worker('http://h/');"
                                   "}, 10); undefinedThing()</script>");
        open(u"/loud"_s, u"Laut"_s);
        QTest::qWait(2000);
        QVERIFY2(!output().contains("BRUELL"), output().left(500));
        QVERIFY2(output().size() < 20000, output().left(500));
    }

    void whatIsNoAddressIsSearchedFor()
    {
        searchEngine(m_server->address(u"/suche?hl=de"_s));
        m_server->page(u"/suche"_s, coloured("Gefunden", "#00ff00") + "Rot &amp; Grün");
        open(u"/red"_s, u"Rot"_s);
        const QRect frame = User::place(maximised(u"Rot"_s));
        User::typeAddress(u"Brot + Wein & more #1"_s);
        QTRY_SEES(maximised(u"Keine gültige Adresse"_s));
        User::press(u"Return"_s);
        QTRY_SEES(maximised(u"Gefunden"_s));
        QCOMPARE(m_server->lastRequest(u"/suche"_s).split(' ').value(1),
                 "/suche?hl=de&q=Brot%20%2B%20Wein%20%26%20more%20%231"_ba);
        QTRY_COLOUR(frame.center(), Qt::green);
        QTest::qWait(700);
        User::click(frame.center());
        User::press(u"ctrl+a Menu i"_s);
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(u"/suche"_s), 2, patience);
        QVERIFY(m_server->lastRequest(u"/suche"_s).contains("&q=Rot%20%26%20Gr%C3%BCn "));
        QTRY_SEES(title()); // there are two windows now
        const QPoint second = frame.center() + QPoint(0, frame.height() / 4);
        QTRY_COLOUR(second, Qt::green); // an address that arrives takes the line's place
        QTest::qWait(300);
        User::typeAddress(m_server->address(u"/blue"_s)); // the new window is in front
        QTRY_COLOUR(second, Qt::blue);
    }
    void withoutASearchEngineThePageSaysSo()
    {
        searchEngine(u"kein Server"_s);
        m_program->start(*m_run, {u"zwei Wörter"_s});
        QTRY_SEES(maximised(u"Keine gültige Adresse"_s));
        QTest::qWait(700);
        User::press(u"ctrl+a Menu i"_s);
        QTRY_SEES(u"Meldung"_s);
        User::press(u"Return"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(u"Meldung"_s), patience);
    }

    void aHangingPageHoldsNothingUp()
    {
        m_server->page(u"/hang"_s, coloured("Endlos", "#0000ff") +
                                       "<script>onkeydown = e => { if (e.key === 'a') for (;;);"
                                       "fetch('/key') }</script>");
        open(u"/hang"_s, u"Endlos"_s);
        const QRect frame = User::place(maximised(u"Endlos"_s));
        const QPoint notice = frame.center() - QPoint(0, frame.height() / 4);
        const QPoint page = frame.center() + QPoint(0, frame.height() / 4);
        User::click(page);
        User::press(u"a"_s);
        const auto isShown = [&] { return User::colourAt(notice) != QColor(Qt::blue); };
        QVERIFY(QTest::qWaitFor(isShown, patience));
        User::press(u"alt+w"_s);
        QTRY_COLOUR(notice, Qt::blue);
        User::press(u"alt+b"_s); // only the notice's, which is away
        User::typeAddress(m_server->address(u"/red"_s));
        QTRY_SEES(maximised(u"Rot"_s));
        QTRY_COLOUR(page, Qt::red);
        User::press(u"alt+Left"_s);
        QTRY_SEES(maximised(u"Endlos"_s));
        QTRY_COLOUR(page, Qt::blue);
        QTest::qWait(700);
        User::click(page);
        User::press(u"a"_s);
        QVERIFY(QTest::qWaitFor(isShown, patience));
        User::press(u"alt+b"_s);
        QVERIFY(QTest::qWaitFor([&] { return User::colourAt(page) != QColor(Qt::blue); }));
        User::press(u"space"_s); // the button of the crash notice has the focus
        QTRY_COLOUR(page, Qt::blue);
        QTest::qWait(700);
        User::press(u"k"_s); // and the page has the keys again
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(u"/key"_s), 1, patience);
    }

    // In full screen a question could not be seen, nor the full screen be left any more.
    void questionsEndFullScreen_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QString>("question");
        QTest::newRow("permission")
            << "navigator.geolocation.getCurrentPosition(() => {})"_ba << u"Erlaubnis"_s;
        QTest::newRow("download") << "location = '/file'"_ba << u"Datei speichern unter"_s;
        QTest::newRow("log-in") << "fetch('/cellar')"_ba << u"Anmeldung"_s;
        QTest::newRow("message") << "alert('x')"_ba << QString();
        QTest::newRow("print") << "print()"_ba << u"Drucken"_s;
    }
    void questionsEndFullScreen()
    {
        QFETCH(const QByteArray, script);
        QFETCH(QString, question);
        if (question.isEmpty())
            question = m_server->address({});
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
        const QPoint page = frame.center() - QPoint(0, 80); // above what asks
        User::click(page);
        QTRY_COLOUR(outside, Qt::green);
        User::press(u"a"_s);
        QTRY_SEES(question);
        QTRY_COLOUR(outside, menuBar);
        User::press(u"Escape"_s);
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
        User::click({frame.center().x(), frame.bottom() - 30});
        QTRY_SEES(u"Drucken"_s); // the page that the user has clicked in
    }

private:
    /// Stores the search engine of the preferences.
    void searchEngine(const QString& address) const
    {
        Prefer stored(m_program->file(u"."_s));
        stored.LoadPref();
        stored.SearchEngine(address);
        stored.SavePref();
    }
};

QTEST_MAIN(PagesTest)
#include "PagesTest.moc"
