#include "base/Prefer.h"
#include "base/Twips.h"
#include "tests/e2e/Scenario.h"

#include <QtTest>

using namespace Qt::StringLiterals;

/// Which pages the engine is told to draw while windows of the frame cover each other, are
/// minimised and scrolled, and whether what covered pages hold is still there afterwards. Pages
/// tell the server when they are hidden and shown.
class CoveredPagesTest : public Scenario {
    Q_OBJECT
private slots:
    void onlyWhatIsSeenIsDrawn()
    {
        openBoth();
        for (const auto& [keys, seen] : {std::pair{u"alt+minus x"_s, u"Zwei"_s},
                                         {u"ctrl+Tab"_s, u"Eins Zwei"_s},
                                         {u"ctrl+Tab"_s, u"Zwei"_s},
                                         {u"alt+f u"_s, u"Eins Zwei"_s},
                                         {u"alt+minus n"_s, u"Eins"_s},
                                         {u"alt+minus n"_s, QString()},
                                         {u"alt+f 2"_s, u"Zwei"_s},
                                         {u"alt+f 1"_s, u"Eins Zwei"_s},
                                         {u"alt+minus x"_s, u"Eins"_s},
                                         {u"alt+f k"_s, u"Eins Zwei"_s},
                                         {u"alt+minus x"_s, u"Eins"_s}}) {
            User::press(keys);
            QTRY_COMPARE_WITH_TIMEOUT(seen, shown(), patience);
            QTest::qWait(500);
            QCOMPARE(shown(), seen); // and stays so
        }
        User::press(u"ctrl+w"_s);
        QTRY_VERIFY_WITH_TIMEOUT(m_states[u"Zwei"_s].startsWith("visible"_L1), patience);
    }

    void aCoveredPageComesBackAsItWas()
    {
        openBoth();
        const QPoint upper = area().topLeft() + QPoint(area().width() / 4, 12);
        const QPoint lower = upper + QPoint(0, area().height() / 2);
        const auto becomes = [this](const QString& seen) {
            return QTest::qWaitFor([&] { return shown() == seen; }, patience);
        };
        User::drag(lower, upper); // exactly over the other
        QVERIFY(becomes(u"Zwei"_s));
        User::press(u"ctrl+Tab w o r t"_s);
        QVERIFY(becomes(u"Eins"_s));
        User::press(u"ctrl+Tab"_s);
        QVERIFY(becomes(u"Zwei"_s));
        QCOMPARE(m_states[u"Eins"_s], u"hidden/100/wort"_s);
        User::drag(upper, upper + QPoint(40, 0));
        QVERIFY(becomes(u"Eins Zwei"_s));
        QCOMPARE(m_states[u"Eins"_s], u"visible/100/wort"_s);
        User::drag(upper + QPoint(40, 0), {upper.x(), area().bottom() - 10});
        User::press(u"ctrl+Tab"_s);
        QVERIFY(becomes(u"Eins"_s));                       // of the other there is but the title
        User::click(area().bottomRight() - QPoint(8, 50)); // in the scroll bar
        QVERIFY(becomes(u"Eins Zwei"_s));
    }

private:
    /// What the frame has for its windows, between menu and status bar.
    static QRect area() { return User::place(title()).adjusted(0, 22, 0, -22); }
    void openBoth()
    {
        Prefer stored(m_program->file(u"."_s));
        stored.LoadPref();
        stored.MdiWidth(toStoredTwips(800));
        stored.MdiHeight(toStoredTwips(640));
        stored.SavePref();
        connect(m_server.get(), &LoopbackServer::requested, this, [this](const QString& path) {
            const QStringList words = path.split(u'/');
            if (words.size() > 2)
                m_states[words[1]] = path.section(u'/', 2);
        });
        m_states.clear();
        for (const char* const name : {"Eins", "Zwei"})
            m_server->page(u'/' + QString::fromLatin1(name),
                           QByteArray("<title>") + name +
                               "</title><body style='height:3000px; background:#0000ff'><input "
                               "autofocus style='position:fixed'><script>const say = () => fetch("
                               "['', document.title, document.visibilityState, scrollY, "
                               "document.querySelector('input').value].join('/'));"
                               "addEventListener('visibilitychange', say); onload = () => { "
                               "scrollTo(0, 100); say() }"
                               "</script>");
        open(u"/Eins"_s, u"Eins"_s);
        QCOMPARE(m_program->startAndWait({m_server->address(u"/Zwei"_s)}), 0);
        QTRY_COMPARE_WITH_TIMEOUT(shown(), u"Eins Zwei"_s, patience);
        QTest::qWait(700);
    }
    /// The pages that are drawn, by name.
    QString shown() const
    {
        QStringList names;
        for (auto it = m_states.begin(); it != m_states.end(); ++it)
            if (it.value().startsWith("visible"_L1))
                names << it.key();
        return names.join(u' ');
    }

    /// What each page has told last: whether it is visible, its scroll position, what was typed.
    QMap<QString, QString> m_states;
};

QTEST_MAIN(CoveredPagesTest)
#include "CoveredPagesTest.moc"
