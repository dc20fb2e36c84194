#pragma once

#include "LoopbackServer.h"

#include "browser/EngineControl.h"
#include "engine/WebEngineHost.h"
#include "tests/gui/FakeShell.h"

#include <QHBoxLayout>
#include <QPointer>
#include <QScreen>
#include <QTemporaryDir>
#include <QWebEngineView>
#include <QtTest>

#include <functional>
#include <memory>
#include <unistd.h>

/// Whether it comes to hold within five seconds. The engine works in the rounds of the event
/// loop, of which the test library's own wait grants but one in ten milliseconds.
template <typename Condition>
bool comesToHold(Condition holds)
{
    constexpr int patience = 20000;
    return QTest::qWaitFor(
        [&holds] {
            QTest::qWait(20);
            return holds();
        },
        patience);
}

/// A bare window around one engine, which writes down what the engine tells.
/// Visits read "title @ address", with "-" for a frame without a document, and
/// "H" for the server.
class EngineWindow : public QWidget {
    Q_OBJECT
public:
    EngineWindow(QWidget* parent, const LoopbackServer& server, const EngineFactory& factory)
        : QWidget(parent), m_server(server), m_engine(factory(this))
    {
        (new QHBoxLayout(this))->addWidget(m_engine->host());
        connect(m_engine.get(), &EngineControl::NavigateComplete2, this,
                [this](const EngineFrame& frame, QString url) {
                    const QString title =
                        frame.Document ? frame.Document->Title : QStringLiteral("-");
                    url.replace(m_server.address({}), QStringLiteral("H"));
                    visits << title + QStringLiteral(" @ ") + url;
                });
        connect(m_engine.get(), &EngineControl::WindowSetHeight, this,
                [this](int height) { requestedSize.setHeight(height); });
        connect(m_engine.get(), &EngineControl::WindowSetWidth, this,
                [this](int width) { requestedSize.setWidth(width); });
        connect(m_engine.get(), &EngineControl::NewWindow2, this,
                [this](EngineControl*& engine, bool& cancel) {
                    EngineWindow* const window = makeWindow ? makeWindow() : nullptr;
                    cancel = window == nullptr;
                    engine = cancel ? nullptr : &window->engine();
                });
    }

    EngineControl& engine() { return *m_engine; }
    QWebEngineView* view() const { return m_engine->host()->findChild<QWebEngineView*>(); }
    /// Goes to a path of the server.
    void visit(const QString& path) { m_engine->Navigate(m_server.address(path)); }
    void visitAndWait(const QString& path)
    {
        const qsizetype before = visits.size();
        visit(path);
        QVERIFY(comesToHold([&] { return visits.size() == before + 1; }));
        QVERIFY(comesToHold([this] { return !m_engine->Busy(); }));
    }
    /// Runs a script in the page.
    void run(const QString& script) { view()->page()->runJavaScript(script); }
    /// The colour in the middle of the window as it is on the screen.
    QColor colour() const
    {
        const QPoint centre = mapTo(window(), rect().center());
        return screen()->grabWindow(window()->winId()).toImage().pixelColor(centre);
    }

    QStringList visits;
    QSize requestedSize;
    /// Gives the window for a page's request; no window refuses it.
    std::function<EngineWindow*()> makeWindow;

private:
    const LoopbackServer& m_server;
    std::unique_ptr<EngineControl> m_engine;
};

/// A server, a profile in a folder of its own, and a place for windows.
class EngineWorld {
public:
    /// After this time a page may sleep that is not seen.
    static constexpr std::chrono::milliseconds sleepAfter{1200};

    EngineWorld()
    {
        m_folder.setAutoRemove(false); // goes with the folder of the whole run
        m_host.serve(shell, &frame);
        frame.resize(800, 600);
        frame.show();
    }
    ~EngineWorld() { m_host.endService(); }
    Q_DISABLE_COPY_MOVE(EngineWorld)

    /// A new window; with a path it has the page when it is handed out.
    EngineWindow* open(const QString& path = {}) { return open(path, m_host.factory()); }
    EngineWindow* openPrivately(const QString& path = {})
    {
        return open(path, m_host.privateFactory());
    }
    void closeWindows() { qDeleteAll(frame.findChildren<EngineWindow*>()); }
    /// Whether the program may end, for the engines' part.
    bool mayEnd() { return m_host.mayEnd(); }
    void cancelDownloads() { m_host.cancelDownloads(); }

    LoopbackServer server;
    FakeShell shell;
    FakePrompt& prompt = shell.fakePrompt;
    /// How many windows were to close by the will of their pages; they stay.
    int closings = 0;

private:
    EngineWindow* open(const QString& path, const EngineFactory& factory)
    {
        auto* const window = new EngineWindow(&frame, server, factory);
        QObject::connect(&window->engine(), &EngineControl::WindowClosing, window,
                         [this](bool, bool& cancel) {
                             cancel = true;
                             ++closings;
                         });
        window->setGeometry(frame.rect());
        window->show();
        if (!path.isEmpty())
            window->visitAndWait(path);
        return window;
    }
    static QUrl resolve(const QString& typed)
    {
        return typed.trimmed().isEmpty() ? QUrl() : QUrl(typed, QUrl::StrictMode);
    }

    QTemporaryDir m_folder;
    WebEngineHost m_host{m_folder.filePath(QStringLiteral("data")),
                         m_folder.filePath(QStringLiteral("cache")), resolve, sleepAfter};

public:
    /// All windows are in it, and what the engines open beside them.
    QWidget frame;
};

/// A test with one world for all its functions, and a window for each of them.
class EngineTest : public QObject {
    Q_OBJECT
public:
    /// Prepares the surroundings of an application that can show pages.
    static void initMain()
    {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        if (geteuid() == 0) // the engine's sandbox refuses to run there
            qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
        // What the engine's threads write last comes after the profile is gone.
        static const QTemporaryDir folder;
        qputenv("TMPDIR", folder.path().toUtf8());
        qputenv("HOME", folder.path().toUtf8()); // where downloads wait for their place
    }

protected slots:
    void init()
    {
        m_world.prompt.questions.clear();
        m_world.prompt.onAsk = {};
        m_world.prompt.onLogIn = {};
        m_world.closings = 0;
        m_window = m_world.open(m_start);
        m_world.frame.activateWindow();
    }
    void cleanup() { m_world.closeWindows(); }

protected:
    /// The path of a new page, which is blue where it is not covered.
    QString page(const QByteArray& html)
    {
        const QString path = QStringLiteral("/page%1").arg(++m_pages);
        m_world.server.page(path, "<body style='background:#0000ff; margin:0'>" + html);
        return path;
    }
    void visit(const QByteArray& html) { m_window->visitAndWait(page(html)); }
    /// Clicks in the middle of a window with a blue page.
    static void click(const EngineWindow* window, Qt::MouseButton button = Qt::LeftButton)
    {
        // Until it has been painted a page takes no input.
        QVERIFY(comesToHold([window] { return window->colour() == QColor(Qt::blue); }));
        QTest::qWait(500);
        const QWidget* const host = window->view();
        QTest::mouseClick(host->focusProxy(), button, {}, host->rect().center());
        QTest::qWait(100);
    }

    EngineWorld m_world;
    QPointer<EngineWindow> m_window;
    /// The path that each window begins with, if any.
    QString m_start;

private:
    int m_pages = 0;
};
