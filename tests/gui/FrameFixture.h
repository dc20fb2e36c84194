#pragma once

#include "app/AppInit.h"
#include "app/ChildArea.h"
#include "app/FrameMenus.h"
#include "app/MDIForm1.h"
#include "app/ProgramStarter.h"
#include "tests/gui/FakeEngine.h"
#include "tests/gui/FakePrompt.h"
#include "tests/gui/GuiTest.h"

#include <QAction>
#include <QPointer>
#include <QTemporaryDir>

/// Starts only the programs that it is told exist.
class FakeStarter : public ProgramStarter {
public:
    bool start(const QString& program, const QStringList& arguments) override
    {
        started << (QStringList(program) + arguments).join(u'|');
        return existing.contains(program);
    }

    QStringList existing;
    QStringList started;
};

/// A whole frame with scripted engines, in a program folder of its own.
struct FrameFixture {
    FrameFixture()
        : start(folder.path(), prompt, starter,
                {factory(),
                 [] {
                     return QStringList{QStringLiteral("C: [root]"), QStringLiteral("D: [a&b]")};
                 },
                 factory()})
    {
    }

    EngineFactory factory()
    {
        return [this](QWidget* parent) {
            auto engine = std::make_unique<FakeEngine>(parent);
            engines.push_back(engine.get());
            return engine;
        };
    }

    MDIForm1& frame() const { return start.frame(); }
    QAction* item(const char* name) { return frame().menus().item(QString::fromUtf8(name)); }
    /// The open browser windows by their keys, blank-separated.
    QString keys()
    {
        QStringList all;
        for (int i = 1; i <= frame().Browser().Count(); ++i)
            all << frame().Browser().Key(i);
        return all.join(u' ');
    }
    /// What each engine was told to open.
    QStringList opened()
    {
        QStringList all;
        for (const auto& engine : engines)
            all << engine->calls().section(u' ', 1);
        return all;
    }
    frmBrowser* window(int position) { return frame().Browser().Item(position); }
    FakeEngine* engine(std::size_t i) { return engines.at(i); }

    QTemporaryDir folder;
    FakePrompt prompt;
    FakeStarter starter;
    std::vector<QPointer<FakeEngine>> engines;
    AppInit start;
};

/// The same, brought up with a start address.
struct StartedFrame : FrameFixture {
    explicit StartedFrame(const QString& address = {})
    {
        start.Main(address);
        QCoreApplication::processEvents(); // which show the frame
    }
};
