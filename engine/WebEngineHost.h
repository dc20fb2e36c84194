#pragma once

#include "browser/EngineControl.h"
#include "engine/WebProfile.h"
#include "engine/page/WebEnginePage.h"

#include <QTimer>

#include <chrono>
#include <memory>
#include <vector>

class Shell;
struct BrowserData;

/// The engine's side of the program: the profile of all ordinary windows, that of the private
/// ones while there are any, and what these have in common. It outlives every engine it has
/// made.
///
/// Who makes and owns what, in the order in which it is made:
/// - The host makes the `WebProfile` of the ordinary windows, which starts the engine. The first
///   private window makes another one.
/// - `WebProfile::serve` makes the `ProfileServices`, which work for all its pages: downloads,
///   notifications, and the deletion of browsing data.
/// - For each browser window the profile makes a `WebEngineControl`, which belongs to the
///   window, a `WebEnginePage`, which belongs to the profile, and `PageServices`, which belong to
///   that page. A page may outlive its window, as long as the user is asked or it is printed.
///
/// In which order it ends: the browser windows with their engines, as the frame closes them;
/// the `ProfileServices` by `endService`, while the frame is still there; after the frame, with
/// the host, the pages that are left, then their profile, which must not go before any page of
/// it. The profile of private windows is put aside when the last of them has gone, so that the
/// next one begins with nothing. It ends when its pages and downloads have ended, too.
class WebEngineHost {
public:
    /// Cookies and the like are kept in `dataFolder`, what can be fetched again
    /// in `cacheFolder`. Both are made when they are needed. `resolve` makes a URL of what the
    /// user has typed. A page that nobody has seen for `sleepAfter` may sleep.
    WebEngineHost(const QString& dataFolder, const QString& cacheFolder, AddressResolver resolve,
                  std::chrono::milliseconds sleepAfter = std::chrono::minutes(5));
    ~WebEngineHost();
    Q_DISABLE_COPY_MOVE(WebEngineHost)

    /// Begins to load `address`, which the first window is about to open: the process that draws
    /// the page starts while the frame is being made. Call it in the same turn of the event loop.
    void begin(const QString& address) { m_ordinary.begin(address); }
    /// The functions that make the engine of a browser window. Call them after `serve` only.
    EngineFactory factory();
    EngineFactory privateFactory();

    /// Makes the services of the profile. Services work with the frame as `shell`, with its
    /// window `frame`, which must not have been shown yet. Both outlive every engine.
    void serve(Shell& shell, QWidget* frame);
    /// Whether the program may end; asks the user if downloads would be lost.
    bool mayEnd();
    /// Breaks the downloads off, as the program ends.
    void cancelDownloads();
    /// Ends the services of all profiles. To be called before the frame goes.
    void endService();

private:
    SearchResolver searchResolver();
    void serve(WebProfile& profile);
    std::unique_ptr<WebProfile> makePrivate();
    /// The ordinary one first.
    std::vector<WebProfile*> profiles();
    void putPrivateAside();
    /// Ends the profiles put aside that nothing needs any more.
    void endUnused();
    void deleteData(const BrowserData& data);

    QString m_dataFolder;
    PromptTurns m_turns;
    FrameReports m_reports;
    WebProfile::Surroundings m_surroundings;
    WebProfile m_ordinary;
    /// Null without a private window.
    std::unique_ptr<WebProfile> m_private;
    /// Of private windows that have gone.
    std::vector<std::unique_ptr<WebProfile>> m_abandoned;
    QTimer m_endTimer;
    Shell* m_shell = nullptr;
    QWidget* m_frame = nullptr;
};
