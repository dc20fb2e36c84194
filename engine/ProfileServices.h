#pragma once

#include "engine/downloads/WebDownloads.h"
#include "pages/downloads/DownloadTable.h"
#include "pages/viewing/SiteZooms.h"

#include <QObject>
#include <QPointer>

class DownloadSign;
class PromptSession;
class QWebEngineProfile;
class Shell;
class frmDownloads;
struct BrowserData;

/// What works for all pages of a profile: downloads with their window, notifications,
/// the sizes of sites, and the deletion of browsing data. It goes before the profile. The downloads
/// of private windows have a list of their own, which goes with these windows; the files stay.
class ProfileServices : public QObject {
    Q_OBJECT
public:
    /// All outlive it. `owner` is the frame's window, which the windows of the
    /// services belong to. Downloads may wait below `dataFolder`, if need be.
    ProfileServices(Shell& shell, QWidget* owner, QWebEngineProfile& profile,
                    PromptSession& session, const QString& dataFolder);
    ~ProfileServices() override;

    WebDownloads& downloads() { return m_downloads; }
    SiteZooms& zooms() { return m_zooms; }
    /// How many downloads are not finished.
    int openDownloads() const { return m_table.openCount(); }
    void cancelDownloads() { m_table.cancelAll(); }

    /// To be told when the last browser window of the profile has gone: the list of its
    /// downloads closes, unless there is one that the user may want to watch.
    void windowsGone();
    /// Empties the list of the downloads, unless one runs or is shown to have ended; whether it
    /// did.
    bool dropIdleList();

    /// Deletes browsing data of this profile.
    void deleteData(const BrowserData& data);

public slots:
    /// Brings the downloads window to the front.
    void showDownloads();
    /// Asks which browsing data are to be deleted.
    void showBrowserData();

signals:
    /// The user wants these data to be deleted, of all profiles.
    void deletionWanted(const BrowserData& data);

private:
    frmDownloads& downloadsWindow();
    /// Tells the frame how many downloads would be lost.
    void tellOpen();
    /// Says what has been deleted, or will be.
    void reportDeletion(const BrowserData& data);

    Shell& m_shell;
    QWidget* m_owner;
    QWebEngineProfile& m_profile;
    PromptSession& m_session;
    DownloadTable m_table;
    int m_openTold = 0;
    WebDownloads m_downloads;
    SiteZooms m_zooms;
    QPointer<frmDownloads> m_window;
    /// In the frame's status bar.
    QPointer<DownloadSign> m_sign;
};
