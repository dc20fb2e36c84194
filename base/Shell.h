#pragma once

#include "base/KeyedCollection.h"

#include <QString>

#include <memory>

class frmBrowser;
class HistoryItem;
class Prefer;
class Prompt;
class QIcon;

using HistoryCollection = KeyedCollection<std::shared_ptr<HistoryItem>>;

/// The face of the main frame that the other windows see. The frame outlives
/// every window that was given its Shell.
class Shell {
public:
    Shell() = default;
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;
    virtual ~Shell() = default;

    /// Opens `url` in a new browser window; nothing happens when it is empty.
    virtual void VisitUrl(const QString& url) = 0;
    /// Records a visit. May throw (the list rules of `addVisit`).
    virtual void AddToHistory(const QString& url, const QString& title) = 0;
    /// Creates and shows a browser window, owned by the frame. Null when its page
    /// has closed it already, or when there is no room for it.
    virtual frmBrowser* CreateBrowser() = 0;
    /// Takes the window with this number out of the frame's books. Called once,
    /// by the window's unload; the number is 0 while the window is being created.
    virtual void browserUnloaded(qint32 number) = 0;

    /// The visited addresses, oldest first.
    virtual const HistoryCollection& History() const = 0;
    /// The address that the next new browser window opens; empty: the start address.
    virtual const QString& HistoryUrl() const = 0;
    virtual void HistoryUrl(const QString& url) = 0;
    virtual void bNewSize(bool value) = 0;
    virtual void bIsOpenBook(bool value) = 0;
    virtual void bIsOpenHistory(bool value) = 0;
    /// The frame is to show its status bar.
    virtual void StatusBarCurr(bool value) = 0;

    /// While true, the next new-window request of any page is refused, once.
    /// One flag for the whole program.
    virtual bool bOpenNewWindow() const = 0;
    virtual void bOpenNewWindow(bool value) = 0;

    /// Switches drops on the frame and the hand-over of addresses off and on: a
    /// switch, not a counter.
    virtual void SetDropDisabled(bool disable) = 0;
    /// Writes into panel 3 of the frame's status bar, which all windows share.
    virtual void statusText(const QString& text) = 0;

    virtual Prefer& preferences() = 0;
    virtual Prompt& prompt() = 0;
    /// The folder of the executable, without trailing separator.
    virtual const QString& programFolder() const = 0;
    virtual const QString& title() const = 0;
    virtual QIcon frameIcon() const = 0;
    virtual QIcon childIcon() const = 0;
};
