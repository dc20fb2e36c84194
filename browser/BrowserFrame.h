#pragma once

#include "base/Shell.h"

class ProposalSource;
class frmBrowser;

/// What a browser window asks of the frame that holds it, beyond what every window may.
class BrowserFrame : public Shell {
public:
    /// Creates and shows a browser window, owned by the frame, private if `opener` is. It
    /// becomes the active one,
    /// unless `opener`, whose page wants it, is not: the user may be typing elsewhere. Null
    /// when its page has closed it already, or when there is no room for it.
    virtual frmBrowser* CreateBrowser(frmBrowser* opener) = 0;
    /// Removes the window with this number from the frame's collection. Called once,
    /// by the window's unload; the number is 0 while the window is being created.
    virtual void browserUnloaded(qint32 number) = 0;
    /// Records a visit. May throw (the list rules of `addVisit`).
    virtual void AddToHistory(const QString& url, const QString& title) = 0;

    /// While true, the next new-window request of any page is refused, once.
    /// One flag for the whole program.
    virtual bool bOpenNewWindow() const = 0;
    virtual void bOpenNewWindow(bool value) = 0;
    /// A page has asked for a window.
    virtual void bNewSize(bool value) = 0;

    virtual QIcon childIcon() const = 0;
    /// That of a private browser window.
    virtual QIcon privateIcon() const = 0;
    /// What the address lines of all windows propose.
    virtual ProposalSource& proposals() = 0;
};
