#pragma once

#include "LoopbackServer.h"

#include "browser/EngineControl.h"
#include "engine/WebEngineHost.h"
#include "tests/gui/FakeShell.h"

#include <QPointer>
#include <QTemporaryDir>
#include <QWidget>

#include <functional>
#include <memory>

class EngineWorld;
class QWebEngineView;

/// A bare window around one engine, which writes down what the engine tells.
/// Visits read "title @ address", with "-" for a frame without a document, and
/// "H" for the server.
class EngineWindow : public QWidget {
    Q_OBJECT
public:
    EngineWindow(EngineWorld& world, const EngineFactory& factory);

    EngineControl& engine() { return *m_engine; }
    QWebEngineView* view() const;
    /// Goes to a path of the server.
    void visit(const QString& path);
    void visitAndWait(const QString& path);
    /// Runs a script in the page.
    void run(const QString& script);
    /// The colour in the middle of the window as it is on the screen.
    QColor colour() const;

    QStringList visits;
    QSize requestedSize;
    /// Gives the window for a page's request; no window refuses it.
    std::function<EngineWindow*()> makeWindow;

private:
    EngineWorld& m_world;
    std::unique_ptr<EngineControl> m_engine;
};

/// A server, a profile in a folder of its own, and a place for windows.
class EngineWorld {
public:
    EngineWorld();
    ~EngineWorld();
    Q_DISABLE_COPY_MOVE(EngineWorld)

    /// A new window; with a path it has the page when it is handed out.
    EngineWindow* open(const QString& path = {});
    void closeWindows();
    /// Whether the program may end, for the engines' part.
    bool mayEnd() { return m_host.mayEnd(); }

    LoopbackServer server;
    FakeShell shell;
    FakePrompt& prompt = shell.fakePrompt;
    /// How many windows were to close by the will of their pages; they stay.
    int closings = 0;

private:
    QTemporaryDir m_folder;
    WebEngineHost m_host;

public:
    /// All windows are in it, and what the engines open beside them.
    QWidget frame;
};

/// A test with one world for all its functions, and a window for each of them.
class EngineTest : public QObject {
    Q_OBJECT
protected slots:
    void init();
    void cleanup() { m_world.closeWindows(); }

protected:
    /// The path of a new page, which is blue where it is not covered.
    QString page(const QByteArray& html);
    void visit(const QByteArray& html) { m_window->visitAndWait(page(html)); }
    /// Clicks in the middle of a window with a blue page.
    static void click(const EngineWindow* window, Qt::MouseButton button = Qt::LeftButton);

    EngineWorld m_world;
    QPointer<EngineWindow> m_window;
    /// The path that each window begins with, if any.
    QString m_start;

private:
    int m_pages = 0;
};

/// Runs the tests of `Test` in an application that can show pages.
int prepareEngineTests(int& argc, char** argv, const std::function<int()>& run);

#define ENGINE_TEST_MAIN(Test)                                                                     \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        return prepareEngineTests(argc, argv, [&] {                                                \
            Test test;                                                                             \
            return QTest::qExec(&test, argc, argv);                                                \
        });                                                                                        \
    }
