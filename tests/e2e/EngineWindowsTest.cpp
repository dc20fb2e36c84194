#include "EngineWorld.h"

#include <QtTest>

using namespace Qt::StringLiterals;

/// Windows that pages open, resize and close, and engines that go at any moment.
class EngineWindowsTest : public EngineTest {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        m_start = u"/opener"_s;
        m_world.server.page(m_start, "<title>Opener</title><a id=a href='/target' "
                                     "target=_blank style='font-size:300px'>link</a>");
        m_world.server.page(u"/target"_s, "<title>Ziel</title><body style='background:#0000ff'>");
        m_world.server.page(u"/home"_s, "<title>Heim</title>");
    }
    void init()
    {
        EngineTest::init();
        m_window->makeWindow = [this] {
            m_lent = m_world.open();
            m_lent->visit(u"/home"_s); // must not win
            connect(&m_lent->engine(), &EngineControl::BeforeNavigate2, m_lent,
                    [this] { m_nameWhenBusy = m_lent->engine().LocationName(); });
            return m_lent;
        };
    }

    void lentPageWins()
    {
        const auto check = [this](const QString& script, const QSize& size) {
            m_lent.clear();
            m_window->run(script);
            QTRY_VERIFY(m_lent);
            QTRY_COMPARE(m_lent->visits, QStringList{u"Ziel @ H/target"_s});
            QTRY_COMPARE(m_lent->colour(), QColor(Qt::blue));
            QTRY_VERIFY(!m_lent->engine().Busy());
            QCOMPARE(m_lent->requestedSize, size);
            QCOMPARE(m_world.server.requests(u"/home"_s), 0);
        };
        check(u"window.open('/target', '', 'width=320,height=210')"_s, {320, 210});
        check(u"document.getElementById('a').click()"_s, {});
        check(u"w = window.open(''); setTimeout(() => { w.location = '/target' }, 50)"_s, {});
    }

    void writtenWindow()
    {
        m_window->run(u"w = window.open(''); setTimeout(() => { w.document.write("
                      "'<title>Text</title><body style=\"background:#00ff00\">') }, 300)"_s);
        QTRY_VERIFY(m_lent);
        QTRY_COMPARE(m_lent->colour(), QColor(Qt::green));
        QTRY_COMPARE(m_lent->engine().LocationName(), u"Text"_s);
        QTRY_COMPARE(m_nameWhenBusy, u"Text"_s); // so that its window takes it up
        QTRY_VERIFY(!m_lent->engine().Busy());
        QCOMPARE(m_lent->visits, QStringList());
        QCOMPARE(m_world.server.requests(u"/home"_s), 0);
    }

    void engineGoes()
    {
        engineGoesDuring(&EngineControl::BeforeNavigate2, {});
        engineGoesDuring(&EngineControl::NavigateComplete2, "<iframe src=/home></iframe>");
        engineGoesDuring(&EngineControl::WindowClosing, "<script>window.close()</script>");
        // The others live on.
        m_window->visit(u"/target"_s);
        QTRY_COMPARE(m_window->visits.last(), u"Ziel @ H/target"_s);
    }

private:
    template <typename Signal>
    void engineGoesDuring(Signal signal, const QByteArray& html)
    {
        m_world.server.page(u"/victim"_s, html);
        bool isGone = false;
        m_window->makeWindow = [&] {
            m_lent = m_world.open();
            connect(&m_lent->engine(), signal, this, [&] {
                isGone = true;
                delete std::exchange(m_lent, nullptr);
            });
            return m_lent;
        };
        m_window->run(u"window.open('/victim', '', 'width=300,height=200')"_s);
        QTRY_VERIFY(isGone);
    }

    QPointer<EngineWindow> m_lent;
    QString m_nameWhenBusy;
};

ENGINE_TEST_MAIN(EngineWindowsTest)
#include "EngineWindowsTest.moc"
