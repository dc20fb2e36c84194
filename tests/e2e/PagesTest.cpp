#include "tests/e2e/Scenario.h"

#include <QtTest>

using namespace Qt::StringLiterals;

/// What a page of the day does to its window, seen by its user.
class PagesTest : public Scenario {
    Q_OBJECT
private slots:
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

    void aSentFormIsAskedAbout()
    {
        m_server->page(u"/form"_s, "<title>Formular</title><form method=post action=/order>"
                                   "<button style='position:fixed;inset:0'></form>");
        m_server->page(u"/order"_s, "<title>Bestellt</title>");
        open(u"/form"_s, u"Formular"_s);
        User::click(User::place(maximised(u"Formular"_s)).center());
        QTRY_SEES(maximised(u"Bestellt"_s));
        const QString question = m_server->address({}); // the site asks
        const auto answer = [&](const QString& keys) {
            User::press(u"F5"_s);
            QTRY_SEES(question);
            User::press(keys);
            QTRY_VERIFY_WITH_TIMEOUT(!User::sees(question), patience);
            QTest::qWait(300);
        };
        answer(u"Escape"_s);
        answer(u"Return"_s); // the safe answer is the default one
        QCOMPARE(m_server->requests(u"/order"_s), 1);
        answer(u"alt+e"_s);
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(u"/order"_s), 2, patience);
        QTRY_SEES(maximised(u"Bestellt"_s));
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
};

QTEST_MAIN(PagesTest)
#include "PagesTest.moc"
