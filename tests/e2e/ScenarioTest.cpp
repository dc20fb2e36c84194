#include "tests/e2e/Scenario.h"

#include <QtTest>

#include <csignal>
#include <utility>

using namespace Qt::StringLiterals;

/// What a user does with the real program, by keys, clicks and what the display shows.
class ScenarioTest : public Scenario {
    Q_OBJECT
private slots:
    void pagesAndLinksComeIntoTheArchive()
    {
        m_server->page(u"/page"_s, "<title>Seite</title><a href=/red>Das Ziel</a><input>");
        open(u"/page"_s, u"Seite"_s);
        const auto kept = [this](const QString& folder) {
            const QString record = QString::fromLatin1(bytesOf(m_program->file(folder)).left(402));
            return record.mid(2, 200).trimmed() + u' ' + record.mid(202).trimmed();
        };
        const QString dialog = u"Bookmark - Hinzufügen"_s;
        User::press(u"Tab shift+F10 c"_s);
        QTRY_SEES(dialog);
        User::press(u"Return"_s); // into a new user's first folder
        QTRY_COMPARE_WITH_TIMEOUT(kept(u"1.bkm"_s), u"Das Ziel "_s + m_server->address(u"/red"_s),
                                  patience);
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(dialog), patience);
        User::press(u"Tab ctrl+d"_s); // the key is not the field's
        QTRY_SEES(dialog);
        User::press(u"Tab Tab Tab Tab space"_s);
        User::enter(u"Reisen"_s);
        const QString page = u"Seite "_s + m_server->address(u"/page"_s);
        QTRY_COMPARE_WITH_TIMEOUT(kept(u"2.bkm"_s), page, patience);

        User::press(u"ctrl+shift+o"_s);
        QTRY_SEES(u"Bookmark Archiv"_s);
        User::click(User::place(maximised(u"Seite"_s)).bottomLeft() - QPoint(-100, 100));
        QTRY_COMPARE_WITH_TIMEOUT(User::activeWindow(), maximised(u"Seite"_s), patience);
        User::press(
            u"ctrl+l ctrl+d"_s); // the folder of the last time comes first, and has it already
        QTRY_SEES(dialog);
        User::type(u"Noch einmal"_s);
        User::press(u"Return"_s);
        QTRY_SEES(u"Meldung"_s);
        User::press(u"Return"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(dialog), patience);
        QCOMPARE(kept(u"2.bkm"_s), page); // a change of the window's, not saved yet
        User::press(u"ctrl+shift+o"_s);
        QTRY_COMPARE_WITH_TIMEOUT(User::activeWindow(), u"Bookmark Archiv"_s, patience);
        User::press(u"alt+a s"_s);
        QTRY_VERIFY_WITH_TIMEOUT(kept(u"2.bkm"_s).startsWith(u"Noch einmal"_s), patience);
    }

    void brokenDownloadIsTakenUpAgain()
    {
        m_server->page(u"/link"_s, "<title>Link</title><a href=/file style='position:fixed;"
                                   "inset:0'></a>");
        LoopbackServer::Answer answer{.body = QByteArray(90000, 'x'),
                                      .type = "application/octet-stream",
                                      .headers = "Content-Disposition: attachment\r\n",
                                      .sent = 40000,
                                      .etag = "\"1\"",
                                      .closes = true};
        m_server->answer(u"/file"_s, answer);
        open(u"/link"_s, u"Link"_s);
        const QRect frame = User::place(maximised(u"Link"_s));
        User::click(frame.center());
        QTRY_SEES(u"Datei speichern unter"_s);
        const QString file = m_program->home() + u"/datei.bin"_s;
        User::enter(file);
        QTRY_SEES(u"Downloads"_s);
        // The engine tries some times by itself.
        const auto hasGivenUp = [this, before = 0]() mutable {
            QTest::qWait(800);
            return std::exchange(before, m_server->requests(u"/file"_s)) ==
                   m_server->requests(u"/file"_s);
        };
        QVERIFY(QTest::qWaitFor(hasGivenUp, patience));
        User::press(u"ctrl+j"_s);
        QTRY_COMPARE_WITH_TIMEOUT(User::activeWindow(), u"Downloads"_s, patience);
        answer.sent = 60000;
        answer.closes = false;
        answer.waits = true;
        m_server->answer(u"/file"_s, answer);
        const int before = m_server->requests(u"/file"_s);
        User::press(u"alt+e"_s); // again, from where it broke off
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(u"/file"_s), before + 1, patience);
        QVERIFY(m_server->lastRequest(u"/file"_s).contains("Range: bytes=40000-"));
        User::press(u"Escape"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(u"Downloads"_s), patience);
        // The sign in the status bar.
        for (int above = 8; above < 48 && !User::sees(u"Downloads"_s); above += 8) {
            User::click(frame.bottomRight() - QPoint(60, above));
            QTest::qWait(500);
        }
        QTRY_COMPARE_WITH_TIMEOUT(User::activeWindow(), u"Downloads"_s, patience);
        User::press(u"alt+h"_s); // it pauses
        m_server->goOn();
        QTest::qWait(700);
        QVERIFY(!QFile::exists(file));
        User::press(u"alt+s"_s);
        QTRY_COMPARE_WITH_TIMEOUT(bytesOf(file), answer.body, patience);
    }

    void logInIsAskedFor()
    {
        m_server->answer(u"/cellar"_s, {.body = "<title>Keller</title>", .logIn = "anna:geheim"});
        m_program->start(*m_run, {m_server->address(u"/cellar"_s)});
        QTRY_SEES(u"Anmeldung"_s);
        User::press(u"a n n a Tab"_s);
        User::enter(u"falsch"_s);
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(u"/cellar"_s), 2, patience);
        QTRY_SEES(u"Anmeldung"_s); // with the user's name
        User::enter(u"geheim"_s);
        QTRY_SEES(maximised(u"Keller"_s));
    }

    void crashedPageIsLoadedAgain()
    {
        m_server->page(u"/one"_s, coloured("Eins", "#0000ff") +
                                      "<script>onkeydown = () => {"
                                      "document.body.style.background = '#ff0000' }</script>");
        open(u"/one"_s, u"Eins"_s);
        const QPoint corner = User::place(maximised(u"Eins"_s)).center() - QPoint(200, 50);
        User::press(u"f"_s);
        QTRY_COLOUR(corner, Qt::red);
        for (const qint64 process : pageProcesses(m_run->processId()))
            ::kill(static_cast<pid_t>(process), SIGKILL);
        QTRY_VERIFY_WITH_TIMEOUT(User::colourAt(corner) != QColor(Qt::red), patience);
        User::press(u"Return"_s); // the button of the notice has the focus
        QTRY_COLOUR(corner, Qt::blue);
        QCOMPARE(m_server->requests(u"/one"_s), 2);
        QTest::qWait(700);
        User::press(u"f"_s);
        QTRY_COLOUR(corner, Qt::red);
    }

    void leavingIsAskedFor()
    {
        m_server->page(u"/form"_s,
                       "<title>Formular</title><textarea style='width:90vw;height:80vh'>"
                       "</textarea><script>onbeforeunload = e => {"
                       "e.preventDefault(); e.returnValue = '' }</script>");
        open(u"/form"_s, u"Formular"_s);
        User::click(User::place(maximised(u"Formular"_s)).center());
        User::press(u"a b ctrl+w"_s);
        const QString question = m_server->address({}); // the site asks

        QTRY_SEES(question);
        User::press(u"Escape"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(question), patience);
        QVERIFY(User::sees(maximised(u"Formular"_s)));
        User::typeAddress(m_server->address(u"/red"_s));
        QTRY_SEES(question);
        QTest::qWait(4000); // the user takes a while
        User::press(u"Escape"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(question), patience);
        QTest::qWait(700);
        User::press(u"ctrl+l ctrl+c"_s); // the line has the page's address again
        QTRY_COMPARE_WITH_TIMEOUT(User::clipboard(), m_server->address(u"/form"_s), patience);
        User::press(u"ctrl+w"_s);
        QTRY_SEES(question);
        User::press(u"shift+Tab Return"_s); // past the offer to be silenced, the second time
        QTRY_SEES(title());
    }

    void bookmarksOfAnotherBrowserComeAlong()
    {
        const QString ends = u"Bookmarks übernehmen"_s;
        m_program->start(*m_run, {QFINDTESTDATA("bookmarks/nested.html")});
        QTRY_SEES(maximised(u"Bookmarks"_s));
        const QRect frame = User::place(maximised(u"Bookmarks"_s));
        QTest::qWait(700);
        User::press(u"shift+F6 Return"_s);
        QTRY_SEES(ends);
        User::press(u"Return"_s); // takes them
        User::press(u"Return"_s); // closes
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(ends), patience);
        QTRY_COMPARE_WITH_TIMEOUT(User::activeWindow(), u"Bookmark Archiv"_s, patience);
        const auto index = [this] { return bytesOf(m_program->file(u"Book.bkm"_s)); };
        User::press(u"ctrl+z alt+a s"_s);
        QTest::qWait(700);
        QVERIFY(!index().contains("Leiste"));
        User::press(u"Escape"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(u"Bookmark Archiv"_s), patience);

        // The bar's button, by the mouse; it is not known how high the status bar is.
        for (int above = 20; above < 80 && !User::sees(ends); above += 10) {
            User::click(frame.bottomLeft() + QPoint(60, -above));
            QTest::qWait(700);
        }
        QTRY_SEES(ends);
        User::press(u"Return Return"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(ends), patience);
        User::press(u"alt+a s"_s);
        QTRY_VERIFY_WITH_TIMEOUT(index().contains("Leiste \x96 Reisen   "), patience);
        QVERIFY(bytesOf(m_program->file(u"3.bkm"_s))
                    .contains("https://xn--fhre-loa.example/%E6%97%A5"));
        User::press(u"Escape ctrl+q"_s);
        QVERIFY(hasEnded());
    }
};

QTEST_MAIN(ScenarioTest)
#include "ScenarioTest.moc"
