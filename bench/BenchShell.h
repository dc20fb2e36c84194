#pragma once

#include "app/AppInit.h"
#include "app/MDIForm1.h"
#include "app/ProgramStarter.h"
#include "base/DialogPrompt.h"
#include "engine/WebEngineHost.h"

/// The shell around the real engine inside this process, put together as the
/// program does it. Addresses are taken as they are.
class BenchShell {
public:
    /// `folder` holds the preferences and what the engine keeps; pages that nobody sees may
    /// sleep after `sleepAfter`.
    explicit BenchShell(const QString& folder,
                        std::chrono::milliseconds sleepAfter = std::chrono::minutes(5));
    ~BenchShell();
    Q_DISABLE_COPY_MOVE(BenchShell)

    AppInit& module() { return m_module; }
    MDIForm1& frame() { return m_module.frame(); }

private:
    WebEngineHost m_engines;
    DialogPrompt m_prompt;
    ProcessStarter m_starter;
    AppInit m_module;
};

/// Whether one of the windows is loading.
bool isBusy(const MDIForm1& frame);
