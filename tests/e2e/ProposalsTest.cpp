#include "tests/core/SampleArchive.h"
#include "tests/e2e/Scenario.h"

#include <QtTest>

using namespace Qt::StringLiterals;

/// What the address line proposes while the user types, and what becomes of it.
class ProposalsTest : public Scenario {
    Q_OBJECT
private slots:
    void onlyWhatIsChosenIsOpened()
    {
        openTwoPages();
        const int before = m_server->requests(u"/red"_s);
        // As it was typed, though a proposal begins with it.
        for (const auto& [path, keys] :
             {std::pair{u"/re"_s, u"Return"_s}, {u"/r"_s, u"Down Up Return"_s}}) {
            typeIn(m_server->address(path));
            User::press(keys);
            QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(path), 1, patience);
            QTRY_VERIFY_WITH_TIMEOUT(!User::sees(m_list), patience);
        }
        QCOMPARE(m_server->requests(u"/red"_s), before);
        typeIn(u"rot"_s);
        User::press(u"Down Return"_s);
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(u"/red"_s), before + 1, patience);
        QTRY_SEES(maximised(u"Rot"_s));
        typeIn(u"BLAU /"_s);
        User::click(User::place(m_list).center());
        QTRY_SEES(maximised(u"Blau"_s));
        QVERIFY(!User::sees(m_list));
    }

    void escapeClosesTheListFirst()
    {
        openTwoPages();
        typeIn(u"rot"_s);
        User::press(u"Down"_s);
        QCOMPARE(copied(), m_server->address(u"/red"_s));
        User::press(u"Escape"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(m_list), patience);
        QCOMPARE(copied(), u"rot"_s);
        User::press(u"Escape"_s);
        QCOMPARE(copied(), m_server->address(u"/blue"_s));
        QVERIFY(!User::sees(m_list));
        // The key would stop a load.
        const QPoint middle = User::place(maximised(u"Blau"_s)).center();
        const QByteArray begin = coloured("Langsam", "#00ff00") + QByteArray(2000, ' ');
        m_server->answer(u"/slow"_s, {.body = begin + "<script>document.title='Ganz'</script>",
                                      .sent = begin.size(),
                                      .waits = true});
        User::typeAddress(m_server->address(u"/slow"_s));
        QTRY_COLOUR(middle, "#00ff00");
        QTest::qWait(700); // the address of the page that has come is put into the line
        typeIn(u"rot"_s);
        User::press(u"Escape"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(m_list), patience);
        QCOMPARE(copied(), u"rot"_s);
        m_server->goOn();
        QTRY_SEES(maximised(u"Ganz"_s));
    }

    /// Away goes the list with whatever turns the user to something else.
    void theListNeverStaysBehind()
    {
        openTwoPages();
        const QRect frame = User::place(maximised(u"Blau"_s));
        for (const auto& away : {u"Tab"_s, u"alt+f Escape"_s, u"alt+Down Escape"_s, u"F11 F11"_s}) {
            typeIn(u"rot"_s);
            User::press(away);
            QTRY_VERIFY_WITH_TIMEOUT(!User::sees(m_list), patience);
        }
        typeIn(u"rot"_s);
        User::click(frame.center());
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(m_list), patience);
        typeIn(u"rot"_s);
        User::move(maximised(u"Blau"_s), frame.topLeft() + QPoint(30, 30));
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(m_list), patience);
        QCOMPARE(m_program->startAndWait({m_server->address(u"/red"_s)}), 0);
        QTRY_SEES(title());
        QTest::qWait(700); // the page that has come puts its address into the line
        for (const auto& away : {u"ctrl+Tab"_s, u"alt+minus n"_s, u"ctrl+w"_s}) {
            typeIn(u"rot"_s);
            User::press(away);
            QTRY_VERIFY_WITH_TIMEOUT(!User::sees(m_list), patience);
        }
    }

    /// They are known before the archive's window is opened, and no script of theirs runs.
    void bookmarks()
    {
        storeArchive(m_program->file(u"."_s),
                     {{u"Mein Blau"_s, m_server->address(u"/blue"_s)},
                      {u"Skript"_s, u"javascript:document.title='gelaufen'"_s}});
        open(u"/red"_s, u"Rot"_s);
        typeIn(u"mein blau"_s);
        User::press(u"Down Return"_s);
        QTRY_SEES(maximised(u"Blau"_s));
        typeIn(u"skript"_s);
        User::press(u"Down Return"_s);
        QTRY_SEES(maximised(u"Keine gültige Adresse"_s));
    }

private:
    void openTwoPages()
    {
        open(u"/red"_s, u"Rot"_s);
        User::typeAddress(m_server->address(u"/blue"_s));
        QTRY_SEES(maximised(u"Blau"_s));
        QVERIFY(!User::sees(m_list));
    }
    void typeIn(const QString& text)
    {
        User::press(u"ctrl+l"_s);
        User::type(text);
        QTRY_SEES(m_list);
    }
    static QString copied()
    {
        Desk::here().clearClipboard();
        User::press(u"ctrl+a ctrl+c"_s);
        const auto text = [] { return User::clipboard(); };
        const bool isThere = QTest::qWaitFor([&] { return !text().isEmpty(); }, patience);
        return isThere ? text() : u"nothing"_s;
    }

    const QString m_list = u"Vorschläge"_s;
};

QTEST_MAIN(ProposalsTest)
#include "ProposalsTest.moc"
