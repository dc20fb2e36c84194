#pragma once

#include "browser/PageSafety.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class QIcon;
class QWidget;

/// The document of a frame of a page.
struct EngineDocument {
    QString Title;
};

/// The frame of a page that completed a navigation: the page itself or a
/// sub-frame. An image or a text that the engine shows has a document too;
/// nothing is there while a page of the engine's own stands in its place.
struct EngineFrame {
    std::optional<EngineDocument> Document;
};

/// The embedded web-browser engine as a browser window sees it: the engine's
/// operations, properties and events under their published names. Addresses
/// are texts; how they are understood is the engine's business.
///
/// A control belongs to its window. Operations may throw Error; the window
/// ignores that statement by statement. No event is sent from within an
/// operation, and the receiver of an event may close its window.
class EngineControl : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Opens an address, exactly as it was stored, dropped or handed over. A script
    /// ("javascript:") would run in the page shown, so it is refused like a text that is
    /// no address.
    virtual void Navigate(const QString& url) = 0;
    /// As Navigate, for what the user has typed by hand: it may be a script.
    virtual void NavigateTyped(const QString& url) { Navigate(url); }
    virtual void GoBack() = 0;
    virtual void GoForward() = 0;
    virtual void Refresh() = 0;
    /// As Refresh, but asks the server again for everything.
    virtual void RefreshPastCache() = 0;
    virtual void Stop() = 0;
    /// Has the page ask the user before its window is closed. False when there is
    /// nothing to ask: the window may go at once. Otherwise WindowClosing follows
    /// unless the user wants to stay.
    virtual bool AskToClose() { return false; }

    /// A navigation that was asked for is *pending* until the engine begins to load its page,
    /// then the page is *loading* until it has come, or has been stopped. The control is busy
    /// while either holds, without a gap; the window shows its busy sign from `StartBusy` on
    /// until it finds the control no longer busy.
    virtual bool Busy() const = 0;
    /// The address of the page shown, fully encoded; what was typed when the
    /// engine could not make an address of it; empty when nothing was shown yet.
    virtual QString LocationURL() const = 0;
    /// The name of the page shown: its title, or the address as shown if it has none.
    virtual QString LocationName() const = 0;
    /// The document of the page shown, if there is one.
    virtual std::optional<EngineDocument> Document() const = 0;

    /// How safe the page shown is, and what the user has said about it. What the engine does
    /// not tell is left out.
    virtual PageSafety Safety() const { return {}; }
    /// Takes back what the user has said: the `id` of one of the answers in `Safety`.
    virtual void TakeBack(const QString& /*answer*/) {}

    /// What is to be heard of the page: it plays, or it would if the user had not silenced it.
    enum class Sound { None, Playing, Silenced };

    bool Silent() const { return m_silent; }
    void Silent(bool value) { m_silent = value; }
    bool RegisterAsBrowser() const { return m_registerAsBrowser; }
    void RegisterAsBrowser(bool value) { m_registerAsBrowser = value; }
    bool RegisterAsDropTarget() const { return m_registerAsDropTarget; }
    /// While true, what is dropped on the page is the engine's business.
    virtual void RegisterAsDropTarget(bool value) { m_registerAsDropTarget = value; }
    bool Offline() const { return m_offline; }
    void Offline(bool value) { m_offline = value; }

    /// The pages shown so far, for another control to go on from; empty if there are none.
    virtual QByteArray Pages() const { return {}; }
    /// Goes on from what another control has given, at the page that it showed. False if it
    /// cannot.
    virtual bool RestorePages(const QByteArray& /*pages*/) { return false; }

    /// The host-side widget that shows the page: for its place, size and
    /// visibility. Owned by the widget it was created in.
    virtual QWidget* host() = 0;
    /// Tells whether the user can see any of the page. One that he cannot need not be drawn, and
    /// may do less; nothing of it may be lost. What goes on in it for the user goes on: sounds,
    /// downloads, loads. The host stays as it is. Told at any time, also the same again.
    virtual void PageSeen(bool /*isSeen*/) {}

signals:
    void StatusTextChange(const QString& text);
    void DownloadBegin();
    void DownloadComplete();
    void TitleChange(const QString& text);
    void BeforeNavigate2(const QString& url);
    /// The page asks for a new window: the receiver puts the engine that is to
    /// show it into `engine` (null leaves the decision to the engine), or
    /// refuses with `cancel`.
    void NewWindow2(EngineControl*& engine, bool& cancel);
    /// A frame has reached the address `url` (fully encoded).
    void NavigateComplete2(const EngineFrame& frame, const QString& url);
    /// The page asks for a content size, in pixels.
    void WindowSetHeight(int height);
    void WindowSetWidth(int width);
    void SoundChange(EngineControl::Sound sound);
    /// `Safety` says something else than before.
    void SafetyChange();
    /// The page has this icon; null: none. Not often, whatever the page does.
    void IconChange(const QIcon& icon);
    /// The page asks to be closed; `cancel` keeps the engine alone alive.
    void WindowClosing(bool isChildWindow, bool& cancel);

private:
    bool m_silent = false;
    bool m_registerAsBrowser = false;
    bool m_registerAsDropTarget = false;
    bool m_offline = false;
};

/// Makes the engine of one browser window, its host widget inside `parent`.
using EngineFactory = std::function<std::unique_ptr<EngineControl>(QWidget* parent)>;
