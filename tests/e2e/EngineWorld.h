#pragma once

#include "FakeAsker.h"
#include "LoopbackServer.h"

#include "browser/EngineControl.h"
#include "browser/WebEngineHost.h"
#include "tests/gui/FakeShell.h"

#include <QTemporaryDir>
#include <QWidget>

#include <memory>

/// A bare window around one engine, which writes down what the engine tells.
/// Visits read "title @ address", with "-" for a frame without a document.
class EngineWindow : public QWidget {
    Q_OBJECT
public:
    EngineWindow(const EngineFactory& factory, QWidget* parent);

    EngineControl& engine() { return *m_engine; }
    /// Runs a script in the page.
    void run(const QString& script);

    QStringList visits;
    QSize requestedSize;
    /// Gives the window for a page's request; no window refuses it.
    std::function<EngineWindow*()> makeWindow;

private:
    std::unique_ptr<EngineControl> m_engine;
};

/// A server, a profile in a folder of its own, and a place for windows.
class EngineWorld {
public:
    EngineWorld();
    ~EngineWorld();
    Q_DISABLE_COPY_MOVE(EngineWorld)

    EngineWindow* open();
    /// Whether the program may end, for the engines' part.
    bool mayEnd() { return m_host.mayEnd(); }
    /// The colour in the middle of the window as it is on the screen.
    QColor colourOf(const EngineWindow& window) const;
    QString address(const QString& path) const { return server.address(path); }
    /// The texts with the server's address cut down to "H".
    QStringList shortened(QStringList texts) const;

    LoopbackServer server;
    FakeShell shell;
    FakeAsker asker;

private:
    QTemporaryDir m_folder;
    WebEngineHost m_host;
    QWidget m_frame;
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
