#pragma once

#include "browser/EngineControl.h"
#include "engine/page/WebEngineControl.h"
#include "engine/page/WebEnginePage.h"

#include <memory>

class ProfileServices;
class PromptSession;
class QWebEngineProfile;
class Shell;

/// What the pages of all browser windows share: the one profile, with what
/// they store and how they behave. It outlives every engine it has made.
class WebEngineHost {
public:
    /// Cookies and the like are kept in `dataFolder`, what can be fetched again
    /// in `cacheFolder`. Both are made when they are needed.
    WebEngineHost(const QString& dataFolder, const QString& cacheFolder, AddressResolver resolve);
    ~WebEngineHost();
    Q_DISABLE_COPY_MOVE(WebEngineHost)

    /// Engines are made after `serve` only.
    EngineFactory factory();

    /// Gives the pages the frame that their services work with, and its window. Both outlive
    /// every engine. The window must not have been shown yet.
    void serve(Shell& shell, QWidget* frame);
    /// Whether the program may end; asks the user if something would be lost.
    bool mayEnd();
    /// Ends what works for all pages, before the frame goes.
    void endService();

private:
    void applySettings();
    void addReportScript();

    AddressResolver m_resolve;
    WebFrameReports m_reports;
    std::unique_ptr<PromptSession> m_prompts;
    std::unique_ptr<QWebEngineProfile> m_profile;
    /// The owner of all pages, so that they are gone before the profile.
    std::unique_ptr<QObject> m_pages;
    Shell* m_shell = nullptr;
    std::unique_ptr<ProfileServices> m_services;
};
