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

/// What all pages share besides their store: each service is a small object of
/// its own that this one makes. It goes before the profile.
class ProfileServices : public QObject {
    Q_OBJECT
public:
    /// All outlive it. `owner` is the frame's window, which the windows of the
    /// services belong to.
    ProfileServices(Shell& shell, QWidget* owner, QWebEngineProfile& profile,
                    PromptSession& session);
    ~ProfileServices() override;

    /// Whether the program may end. Asks if that would break downloads off, and
    /// breaks them off if so.
    bool mayEnd();

    /// What the user has refused of `page`, or of windows without a document, no longer counts.
    void forgetRefusals(const QObject* page) { m_downloads.forgetRefusals(page); }

public slots:
    /// Brings the downloads window to the front.
    void showDownloads();
    /// Asks which browsing data are to be deleted, and deletes them.
    void showBrowserData();

signals:
    /// Whoever remembers what pages were permitted is to forget it.
    void permissionsForgotten();

private:
    frmDownloads& downloadsWindow();
    void forget(const BrowserData& data);

    Shell& m_shell;
    QWidget* m_owner;
    QWebEngineProfile& m_profile;
    PromptSession& m_session;
    DownloadTable m_table;
    WebDownloads m_downloads;
    QPointer<frmDownloads> m_window;
};
