#pragma once

#include "FakeEngine.h"
#include "FakePrompt.h"
#include "app/AppInit.h"
#include "app/ChildArea.h"
#include "app/FrameMenus.h"
#include "app/FrameStatusBar.h"
#include "app/MDIForm1.h"

#include <QAction>
#include <QPointer>
#include <QTemporaryDir>

/// A whole frame with scripted engines, in a program folder of its own.
struct FrameFixture {
    FrameFixture()
        : start(folder.path(), prompt,
                {[this](QWidget* parent) {
                     auto engine = std::make_unique<FakeEngine>(parent);
                     engines.push_back(engine.get());
                     return engine;
                 },
                 [] {
                     return QStringList{QStringLiteral("C: [root]"), QStringLiteral("D: [a&b]")};
                 }})
    {
    }

    MDIForm1& frame() { return start.frame(); }
    QAction* item(const char* name) { return frame().menus().item(QString::fromUtf8(name)); }
    /// The open browser windows by their keys, blank-separated.
    QString keys()
    {
        QStringList all;
        for (int i = 1; i <= frame().Browser().Count(); ++i)
            all << frame().Browser().Key(i);
        return all.join(u' ');
    }
    frmBrowser* window(int position) { return frame().Browser().Item(position); }
    FakeEngine* engine(std::size_t i) { return engines.at(i); }

    QTemporaryDir folder;
    FakePrompt prompt;
    std::vector<QPointer<FakeEngine>> engines;
    AppInit start;
};
