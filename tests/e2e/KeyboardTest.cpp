#include "tests/e2e/Scenario.h"

#include <QtTest>

using namespace Qt::StringLiterals;

/// What can be done without the mouse, and where the focus is: tried where the frame,
/// the engine, the toolkit and the window manager meet.
class KeyboardTest : public Scenario {
    Q_OBJECT
private slots:
    /// The engine takes another widget for a page of another site, and the toolkit
    /// passes the focus of the old one on as Tab does.
    void aPageOfAnotherSiteFocusesNoLink()
    {
        tell("Eins");
        tell("Zwei");
        open(u"/red"_s, u"Rot"_s);
        const auto go = [&](const QString& page, const QString& host) {
            User::press(u"ctrl+l"_s);
            User::enter(m_server->address(u'/' + page, host));
            User::press(u"Return"_s);
        };
        go(u"Eins"_s, u"localhost"_s); // from a page without a link, then from one with a link
        QTRY_VERIFY(reaches(u"Eins"_s));
        User::press(u"Return"_s);
        go(u"Zwei"_s, u"127.0.0.1"_s);
        QTRY_VERIFY(reaches(u"Zwei"_s));
        User::press(u"Return alt+Left"_s);
        QTRY_VERIFY(reaches(u"Eins"_s));
        QCOMPARE(m_server->requests(u"/focus"_s) + m_server->requests(u"/followed"_s), 0);
        QCOMPARE(keys(u"Eins"_s, u"Tab"_s) + keys(u"Zwei"_s, u"Tab"_s), 0);
        User::press(u"ctrl+l Tab"_s); // this is meant for the link
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(u"/focus"_s), 1, patience);
        User::press(u"Return"_s);
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(u"/followed"_s), 1, patience);
    }

private:
    /// A page that begins with a link, and tells the server of each key and of a focus
    /// in the link.
    void tell(const char* name)
    {
        const QByteArray script = "onkeydown = e => fetch('/" + QByteArray(name) +
                                  "/' + e.key);"
                                  "addEventListener('focusin', () => fetch('/focus'))";
        m_server->page(u'/' + QString::fromLatin1(name),
                       QByteArray("<title>") + name +
                           "</title><body><a href=/followed>Link</a><script>" + script +
                           "</script>");
    }
    int keys(const QString& page, const QString& key) const
    {
        return m_server->requests(u'/' + page + u'/' + key);
    }
    /// Whether a typed key gets to the page; may be too early for one that comes up.
    bool reaches(const QString& page, const QString& key = u"k"_s)
    {
        const int before = keys(page, key);
        User::press(key);
        return QTest::qWaitFor([&] { return keys(page, key) > before; }, 1000);
    }
};

QTEST_MAIN(KeyboardTest)
#include "KeyboardTest.moc"
