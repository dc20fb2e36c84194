#pragma once

#include <QString>

class Prefer;
class Prompt;
class QIcon;
class QObject;
class QWidget;
class SiteIcons;
struct BookmarkFile;

/// The interface of the main frame for all other windows. The frame outlives
/// every window that was given its Shell.
class Shell {
public:
    Shell() = default;
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;
    virtual ~Shell() = default;

    /// Opens `url` in a new browser window; nothing happens when it is empty.
    virtual void VisitUrl(const QString& url) = 0;
    /// As VisitUrl, in a private browser window: one that leaves nothing behind.
    virtual void VisitUrlPrivately(const QString& url) = 0;
    /// Lets the user add a link to the archive; without a title it gets one by its address.
    virtual void AddToArchive(const QString& title, const QString& url) = 0;
    /// The same for the page of the active browser window.
    virtual void AddPageToArchive() = 0;
    /// The address that the next new browser window opens; empty: the start address.
    virtual void HistoryUrl(const QString& url) = 0;
    /// Opens the archive's window, which asks the user whether to take the bookmarks.
    virtual void importBookmarks(const BookmarkFile& file) = 0;
    virtual void bIsOpenBook(bool value) = 0;
    virtual void bIsOpenHistory(bool value) = 0;
    /// The frame is to show its status bar.
    virtual void StatusBarCurr(bool value) = 0;

    /// Switches drops on the frame and the hand-over of addresses off and on: a
    /// switch, not a counter.
    virtual void SetDropDisabled(bool disable) = 0;
    /// Writes into panel 3 of the frame's status bar, which all windows share.
    virtual void statusText(const QString& text) = 0;
    /// Puts a sign to the right of that panel, and owns it.
    virtual void addStatusSign(QWidget* sign) = 0;

    /// What of `who` would be lost if the program ended now, as a German sentence; empty: nothing.
    virtual void wouldLose(const QObject* who, const QString& what) = 0;

    virtual Prefer& preferences() = 0;
    virtual Prompt& prompt() = 0;
    /// The folder with preferences and archive, without trailing separator.
    virtual const QString& programFolder() const = 0;
    /// The folder of the program in the user's data, without trailing separator; empty where
    /// nothing is to be kept there.
    virtual const QString& dataFolder() const = 0;
    virtual const QString& title() const = 0;
    virtual QIcon frameIcon() const = 0;
    /// Of the pages that were shown in this run.
    virtual SiteIcons& icons() = 0;
};
