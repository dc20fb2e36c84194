#pragma once

#include "engine/downloads/WebDownloads.h"
#include "pages/downloads/DownloadTable.h"

#include <QObject>
#include <QPointer>

class PromptSession;
class QWebEngineProfile;
class Shell;
class frmDownloads;
struct BrowserData;

/// What works for all pages of the profile: downloads with their window, notifications, and
/// the deletion of browsing data. It goes before the profile.
class ProfileServices : public QObject {
    Q_OBJECT
public:
    /// All outlive it. `owner` is the frame's window, which the windows of the
    /// services belong to.
    ProfileServices(Shell& shell, QWidget* owner, QWebEngineProfile& profile,
                    PromptSession& session);
    ~ProfileServices() override;

    /// Whether the program may end. If downloads are not finished the user is asked; they are
    /// broken off if he agrees.
    bool mayEnd();

    WebDownloads& downloads() { return m_downloads; }

public slots:
    /// Brings the downloads window to the front.
    void showDownloads();
    /// Asks which browsing data are to be deleted, and deletes them.
    void showBrowserData();

private:
    frmDownloads& downloadsWindow();
    void deleteData(const BrowserData& data);

    Shell& m_shell;
    QWidget* m_owner;
    QWebEngineProfile& m_profile;
    PromptSession& m_session;
    DownloadTable m_table;
    WebDownloads m_downloads;
    QPointer<frmDownloads> m_window;
};
