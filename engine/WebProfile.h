#pragma once

#include "engine/page/WebEngineControl.h"
#include "pages/asking/PromptSession.h"

#include <QObject>

#include <chrono>
#include <memory>

class ProfileServices;
class QWebEngineProfile;
class Shell;
class FrameReports;

/// A profile of the engine with all that hangs on it: what pages may do, the pages themselves,
/// what the user has said about them, and the services that work for them. Profiles share
/// nothing but what is in `Surroundings`. One without a name is private: nothing of it is kept,
/// and every window that its pages open is private.
class WebProfile : public QObject {
    Q_OBJECT
public:
    /// What all profiles have in common; outlives them.
    struct Surroundings {
        const FrameReports& reports;
        PromptTurns& turns;
        WebEngineControl::Resolvers resolve;
        /// A page that nobody has seen for so long may sleep.
        std::chrono::milliseconds sleepAfter;
    };

    WebProfile(std::unique_ptr<QWebEngineProfile> profile, const Surroundings& surroundings);
    ~WebProfile() override;
    Q_DISABLE_COPY_MOVE(WebProfile)

    /// Makes the services, which work with the frame as `shell`, with its window `frame`;
    /// downloads may wait below `dataFolder`.
    void serve(Shell& shell, QWidget* frame, const QString& dataFolder);
    /// Makes an engine that begins to load `address`. The next one that is wanted in this turn of
    /// the event loop is it.
    void begin(const QString& address);
    /// Makes the engine of a browser window, its host inside `parent`. Call it after `serve`.
    std::unique_ptr<EngineControl> makeEngine(QWidget* parent);

    /// Null before `serve` and after `endService`.
    ProfileServices* services() const { return m_services.get(); }
    /// Ends the services. To be called before the frame goes.
    void endService();
    /// Whether neither a window nor a page nor a service needs it any more.
    bool isUnused() const;

signals:
    /// Its last window has gone. Pages may still be there, and downloads running.
    void abandoned();

private:
    std::unique_ptr<WebEngineControl> newEngine(QWidget* parent);
    /// The engine begun, or a new one.
    std::unique_ptr<WebEngineControl> nextEngine(QWidget* parent);
    void dropBegun();
    void applySettings();
    void addReportScript();
    /// Switches the spell check on for the user's languages, if there are dictionaries.
    void startSpellCheck();

    Surroundings m_surroundings;
    PromptSession m_session;
    /// The frame as the services see it.
    std::unique_ptr<Shell> m_shell;
    std::unique_ptr<QWebEngineProfile> m_profile;
    /// Owns all pages, and goes before the profile.
    std::unique_ptr<QObject> m_pages;
    /// The engine that has no window yet, and what it is in meanwhile; null without one.
    std::unique_ptr<QWidget> m_nowhere;
    std::unique_ptr<WebEngineControl> m_begun;
    std::unique_ptr<ProfileServices> m_services;
    int m_engines = 0;
};
