#pragma once

#include "browser/EngineControl.h"
#include "engine/page/WebEngineControl.h"
#include "engine/page/WebEnginePage.h"

#include <chrono>
#include <memory>

class ProfileServices;
class PromptSession;
class QWebEngineProfile;
class Shell;

/// The engine's side of the program: the one profile of all pages, with what they store and
/// how they behave, and whatever works for pages. It outlives every engine it has made.
///
/// Who makes and owns what, in the order in which it is made:
/// - The host makes the `PromptSession`, the profile, which starts the engine, and `m_pages`.
/// - `serve` makes the `ProfileServices`, which work for all pages: downloads, notifications,
///   and the deletion of browsing data.
/// - For each browser window `factory()` makes a `WebEngineControl`, which belongs to the
///   window, a `WebEnginePage`, which belongs to `m_pages`, and `PageServices`, which belong to
///   that page. A page may outlive its window, as long as the user is asked or it is printed.
///
/// In which order it ends: the browser windows with their engines, as the frame closes them;
/// the `ProfileServices` by `endService`, while the frame is still there; after the frame, with
/// the host, the pages that are left, then the profile, which must not go before any page of
/// it, and the session.
class WebEngineHost {
public:
    /// Cookies and the like are kept in `dataFolder`, what can be fetched again
    /// in `cacheFolder`. Both are made when they are needed. `resolve` makes a URL of what the
    /// user has typed. A page that nobody has seen for `sleepAfter` may sleep.
    WebEngineHost(const QString& dataFolder, const QString& cacheFolder, AddressResolver resolve,
                  std::chrono::milliseconds sleepAfter = std::chrono::minutes(5));
    ~WebEngineHost();
    Q_DISABLE_COPY_MOVE(WebEngineHost)

    /// The function that makes the engine of a browser window. Call it after `serve` only.
    EngineFactory factory();

    /// Makes the services of the profile. Services work with the frame as `shell`, with its
    /// window `frame`, which must not have been shown yet. Both outlive every engine.
    void serve(Shell& shell, QWidget* frame);
    /// Whether the program may end; asks the user if downloads would be lost.
    bool mayEnd();
    /// Ends the services of the profile. To be called before the frame goes.
    void endService();

private:
    void applySettings();
    void addReportScript();
    /// Switches the spell check on for the user's languages, if there are dictionaries.
    void startSpellCheck();

    AddressResolver m_resolve;
    std::chrono::milliseconds m_sleepAfter;
    WebFrameReports m_reports;
    std::unique_ptr<PromptSession> m_prompts;
    std::unique_ptr<QWebEngineProfile> m_profile;
    /// Owns all pages, and goes before the profile.
    std::unique_ptr<QObject> m_pages;
    Shell* m_shell = nullptr;
    std::unique_ptr<ProfileServices> m_services;
};
