#include "EngineWorld.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

using Act = std::function<void()>;
/// Has `Act` run from within one event of an engine.
using Hook = std::function<void(EngineControl&, const Act&)>;

template <typename Signal>
Hook during(Signal signal)
{
    return
        [signal](EngineControl& engine, const Act& act) { QObject::connect(&engine, signal, act); };
}

} // namespace

/// Windows that pages open, resize and close, and engines that go at any moment.
class EngineWindowsTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        m_world = std::make_unique<EngineWorld>();
        m_world->server.page(u"/opener"_s, "<title>Opener</title><a id=a href='/target' "
                                           "target=_blank style='font-size:300px'>link</a>");
        m_world->server.page(u"/target"_s, "<title>Ziel</title><body style='background:#0000ff'>");
        m_world->server.page(u"/home"_s, "<title>Heim</title>");
    }
    void cleanupTestCase() { m_world.reset(); }
    void init()
    {
        m_lent = nullptr;
        m_opener = m_world->open();
        m_opener->makeWindow = [this] {
            m_lent = m_world->open();
            m_lent->engine().Navigate(m_world->address(u"/home"_s)); // must not win
            return m_lent;
        };
        m_opener->engine().Navigate(m_world->address(u"/opener"_s));
        QTRY_COMPARE(m_opener->visits.size(), 1);
        QTRY_VERIFY(!m_opener->engine().Busy());
    }
    void cleanup()
    {
        delete m_opener;
        delete m_lent;
    }

    void lentPageWins_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QSize>("size");
        QTest::newRow("opened") << u"window.open('/target')"_s << QSize();
        QTest::newRow("sized") << u"window.open('/target', '', 'width=320,height=210')"_s
                               << QSize(320, 210);
        QTest::newRow("without a tie") << u"window.open('/target', '', 'noopener')"_s << QSize();
        QTest::newRow("link") << u"document.getElementById('a').click()"_s << QSize();
        QTest::newRow("led on later")
            << u"w = window.open(''); setTimeout(() => { w.location = '/target' }, 50)"_s
            << QSize();
    }
    void lentPageWins()
    {
        QFETCH(QString, script);
        QFETCH(QSize, size);
        m_opener->run(script);
        QTRY_VERIFY(m_lent);
        QTRY_COMPARE(m_world->shortened(m_lent->visits), QStringList{u"Ziel @ H/target"_s});
        QTRY_COMPARE(m_world->colourOf(*m_lent), QColor(Qt::blue));
        QTRY_VERIFY(!m_lent->engine().Busy());
        QCOMPARE(m_lent->engine().LocationURL(), m_world->address(u"/target"_s));
        QCOMPARE(m_lent->requestedSize, size);
        QCOMPARE(m_world->server.requests(u"/home"_s), 0);
        QVERIFY(!m_lent->engine().host()->isHidden());
    }

    void refusedWindow()
    {
        m_opener->makeWindow = nullptr;
        m_opener->run(u"w = window.open('/target'); setInterval(() => { if (!w || w.closed)"
                      " document.title = 'verweigert' }, 50)"_s);
        QTRY_COMPARE(m_opener->engine().LocationName(), u"verweigert"_s);
    }

    void writtenWindow_data()
    {
        QTest::addColumn<QString>("script");
        QTest::newRow("empty") << u"w = window.open(''); w.document.write(text)"_s;
        QTest::newRow("blank") << u"w = window.open('about:blank'); w.document.write(text)"_s;
        QTest::newRow("sized") << u"w = window.open('', '', 'width=300,height=200');"
                                  "w.document.write(text); w.document.close()"_s;
        QTest::newRow("later")
            << u"w = window.open(''); setTimeout(() => { w.document.write(text) }, 300)"_s;
    }
    void writtenWindow()
    {
        QFETCH(QString, script);
        m_opener->run(u"text = '<title>Text</title><body style=\"background:#00ff00\">'; "_s +
                      script);
        QTRY_VERIFY(m_lent);
        QTRY_COMPARE(m_world->colourOf(*m_lent), QColor(Qt::green));
        QTRY_COMPARE(m_lent->engine().LocationName(), u"Text"_s);
        QTRY_VERIFY(!m_lent->engine().Busy());
        QCOMPARE(m_lent->visits, QStringList());
        QCOMPARE(m_world->server.requests(u"/home"_s), 0);
        // The window goes on as any other.
        m_lent->engine().Navigate(m_world->address(u"/target"_s));
        QTRY_COMPARE(m_world->shortened(m_lent->visits), QStringList{u"Ziel @ H/target"_s});
        QTRY_COMPARE(m_world->colourOf(*m_lent), QColor(Qt::blue));
    }

    void engineGoes_data();
    void engineGoes()
    {
        QFETCH(Hook, hook);
        QFETCH(QByteArray, html);
        QFETCH(bool, isLent);
        m_world->server.page(u"/victim"_s, html);
        const auto victim = [this, hook] {
            m_lent = m_world->open();
            m_lent->makeWindow = [] { return nullptr; };
            hook(m_lent->engine(), [this] { delete std::exchange(m_lent, nullptr); });
            return m_lent;
        };
        if (isLent) {
            m_opener->makeWindow = victim;
            m_opener->run(u"window.open('/victim', '', 'width=300,height=200')"_s);
            QTRY_VERIFY(m_world->server.requests(u"/victim"_s) > 0 || m_lent);
        } else {
            victim()->engine().Navigate(m_world->address(u"/victim"_s));
        }
        QTRY_VERIFY((hover(), !m_lent));
        // The others live on.
        m_opener->engine().Navigate(m_world->address(u"/target"_s));
        QTRY_COMPARE(m_world->shortened(m_opener->visits).last(), u"Ziel @ H/target"_s);
    }

    void closedWhileLoading()
    {
        m_world->server.stall(u"/stalled"_s);
        m_lent = m_world->open();
        m_lent->engine().Navigate(m_world->address(u"/stalled"_s));
        QTRY_COMPARE(m_world->server.requests(u"/stalled"_s), 1);
        QVERIFY(m_lent->engine().Busy());
        m_lent->dropEngine();
        delete std::exchange(m_lent, nullptr);
        m_lent = m_world->open();
        m_lent->engine().Navigate(m_world->address(u"/target"_s));
        delete std::exchange(m_lent, nullptr); // before anything began
        m_opener->engine().Navigate(m_world->address(u"/target"_s));
        QTRY_COMPARE(m_world->shortened(m_opener->visits).last(), u"Ziel @ H/target"_s);
    }

    void hoverAndFocus()
    {
        QStringList texts;
        connect(&m_opener->engine(), &EngineControl::StatusTextChange, this,
                [&](const QString& text) { texts << text; });
        QWidget* const host = m_opener->engine().host();
        QTRY_VERIFY(host->focusProxy() != nullptr);
        QWidget* const inner = host->focusProxy();
        QTRY_COMPARE((hover(), texts.value(0)), m_world->address(u"/target"_s));
        QTest::mouseMove(inner, QPoint(inner->width() - 5, inner->height() - 5));
        QTRY_COMPARE(texts.last(), QString());

        QLineEdit line(m_opener);
        line.show();
        line.setFocus();
        QTRY_COMPARE(QApplication::focusWidget(), &line);
        QWidget* now = nullptr;
        connect(qApp, &QApplication::focusChanged, &line, [&](QWidget*, QWidget* to) { now = to; });
        QTest::mouseClick(inner, Qt::LeftButton, {},
                          QPoint(inner->width() - 5, inner->height() - 5));
        QTRY_VERIFY(now != nullptr && (now == host || host->isAncestorOf(now)));
        line.setFocus();
        host->setFocus();
        QVERIFY(host == now || host->isAncestorOf(now));
    }

    void drops()
    {
        QMimeData data;
        data.setUrls({QUrl(m_world->address(u"/target"_s))});
        QWidget* const host = m_opener->engine().host();
        const auto offer = [&](QDropEvent&& event) {
            QCoreApplication::sendEvent(host, &event);
            return event.isAccepted() && event.dropAction() != Qt::IgnoreAction;
        };
        const QPoint at(50, 50);
        m_opener->engine().RegisterAsDropTarget(false);
        QVERIFY(!host->acceptDrops());
        m_opener->engine().RegisterAsDropTarget(true);
        QVERIFY(m_opener->engine().RegisterAsDropTarget());
        QVERIFY(offer(QDragEnterEvent(at, Qt::CopyAction, &data, Qt::LeftButton, {})));
        QTRY_VERIFY(offer(QDragMoveEvent(at, Qt::CopyAction, &data, Qt::LeftButton, {})));
        QVERIFY(offer(QDropEvent(at, Qt::CopyAction, &data, Qt::LeftButton, {})));
        QTRY_VERIFY(m_lent); // the engine opens what is dropped in a window of its own
        QTRY_COMPARE(m_world->shortened(m_lent->visits), QStringList{u"Ziel @ H/target"_s});
    }

private:
    /// Moves the mouse over the page of the newest window, to and fro: the
    /// engine takes no notice of a move before its first picture.
    void hover()
    {
        EngineWindow* const window = m_lent ? m_lent : m_opener;
        QWidget* const inner = window->engine().host()->focusProxy();
        if (inner != nullptr) {
            m_isRight = !m_isRight;
            QTest::mouseMove(inner, QPoint(m_isRight ? 60 : 50, 150));
        }
    }

    std::unique_ptr<EngineWorld> m_world;
    QPointer<EngineWindow> m_opener;
    QPointer<EngineWindow> m_lent;
    bool m_isRight = false;
};

void EngineWindowsTest::engineGoes_data()
{
    QTest::addColumn<Hook>("hook");
    QTest::addColumn<QByteArray>("html");
    QTest::addColumn<bool>("isLent");
    const auto row = [](const char* name, const Hook& hook, const QByteArray& html = {}) {
        QTest::addRow("%s of a window lent", name) << hook << html << true;
        const QByteArray onlyLent = "WindowS WindowC";
        if (!onlyLent.contains(QByteArray(name).left(7))) { // a page that the user opened may not
            QTest::addRow("%s", name) << hook << html << false;
        }
    };
    row("BeforeNavigate2", during(&EngineControl::BeforeNavigate2));
    row("DownloadBegin", during(&EngineControl::DownloadBegin));
    row("TitleChange", during(&EngineControl::TitleChange), "<title>x</title>");
    row("NavigateComplete2", during(&EngineControl::NavigateComplete2),
        "<iframe src=/home></iframe>");
    row("DownloadComplete", during(&EngineControl::DownloadComplete));
    row("NewWindow2", during(&EngineControl::NewWindow2), "<script>window.open('/home')</script>");
    row("StatusTextChange", during(&EngineControl::StatusTextChange),
        "<a href=/home style='font-size:300px'>link</a>");
    row("WindowSetHeight", during(&EngineControl::WindowSetHeight));
    row("WindowSetWidth", during(&EngineControl::WindowSetWidth));
    row("WindowClosing", during(&EngineControl::WindowClosing), "<script>window.close()</script>");
}

ENGINE_TEST_MAIN(EngineWindowsTest)
#include "EngineWindowsTest.moc"
