#include "engine/ProfileServices.h"

#include "base/Prompt.h"
#include "base/RunCommand.h"
#include "engine/asking/CertificateGuard.h"
#include "engine/asking/Notifications.h"
#include "engine/asking/PermissionRequests.h"
#include "pages/asking/PromptSession.h"
#include "pages/downloads/DownloadSign.h"
#include "pages/downloads/frmDownloads.h"
#include "pages/viewing/StoredWebData.h"
#include "pages/viewing/frmBrowserData.h"

#include <QDesktopServices>
#include <QWebEngineCookieStore>
#include <QWebEngineProfile>

using namespace Qt::StringLiterals;

ProfileServices::ProfileServices(Shell& shell, QWidget* owner, QWebEngineProfile& profile,
                                 PromptSession& session, const QString& dataFolder)
    : m_shell(shell), m_owner(owner), m_profile(profile), m_session(session),
      m_downloads(shell, owner, profile, session, m_table, dataFolder + u"/downloads"_s)
{
    new Notifications(profile, *owner, this);
    new CertificateGuard(profile, session, this);
    connect(&session, &PromptSession::permissionTakenBack, this,
            [this](const QUrl& site, PermissionKind kind) {
                PermissionRequests::forget(m_profile, site, kind);
            });
    connect(&m_downloads, &WebDownloads::accepted, this,
            [this] { downloadsWindow().showQuietly(); });
    m_sign = new DownloadSign(m_table);
    if (profile.isOffTheRecord())
        m_sign->setToolTip(u"Zeigt die Downloads der privaten Fenster"_s);
    connect(m_sign, &DownloadSign::clicked, this, &ProfileServices::showDownloads);
    shell.addStatusSign(m_sign);
    connect(&m_table, &DownloadTable::rowsInserted, this, &ProfileServices::tellOpen);
    connect(&m_table, &DownloadTable::rowsRemoved, this, &ProfileServices::tellOpen);
    connect(&m_table, &DownloadTable::dataChanged, this, &ProfileServices::tellOpen);
}

ProfileServices::~ProfileServices()
{
    delete m_window; // before the table that it shows
    delete m_sign;
}

frmDownloads& ProfileServices::downloadsWindow()
{
    if (!m_window) {
        m_window = new frmDownloads(m_shell, m_owner, m_table, &QDesktopServices::openUrl);
        if (m_profile.isOffTheRecord())
            m_window->setWindowTitle(u"Downloads (privat)"_s);
    }
    return *m_window;
}

void ProfileServices::tellOpen()
{
    if (openDownloads() == m_openTold)
        return;
    m_openTold = openDownloads();
    m_shell.wouldLose(this, unfinishedText(m_openTold));
}

void ProfileServices::showDownloads()
{
    frmDownloads& window = downloadsWindow();
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

void ProfileServices::showBrowserData()
{
    const DropsDisabled guard(m_shell);
    // The frame owns the dialog: the active window may be one that shows a page on the whole
    // screen, and would take the dialog along when it ends.
    frmBrowserData dialog(m_owner);
    if (dialog.exec() == QDialog::Accepted)
        emit deletionWanted(dialog.chosen());
}

void ProfileServices::windowsGone()
{
    if (m_window && openDownloads() == 0)
        m_window->close();
}

bool ProfileServices::dropIdleList()
{
    if (openDownloads() > 0 || m_window)
        return false;
    m_table.removeFinished(); // what could still be taken up again keeps a page
    return true;
}

void ProfileServices::deleteData(const BrowserData& data)
{
    if (data.cookies)
        m_profile.cookieStore()->deleteAllCookies();
    if (data.cache)
        m_profile.clearHttpCache();
    if (data.visitedLinks)
        m_profile.clearAllVisitedLinks();
    if (data.permissions) {
        PermissionRequests::forget(m_profile, m_session.permissions);
        m_session.forgetAnswers();
    }
    // What private windows have stored goes with them.
    if (!m_profile.isOffTheRecord())
        reportDeletion(data);
}

void ProfileServices::reportDeletion(const BrowserData& data)
{
    const bool isOnlyStorage =
        data.storage && !data.cookies && !data.cache && !data.visitedLinks && !data.permissions;
    QString done = isOnlyStorage ? QString() : u"Die gewählten Browserdaten sind gelöscht. "_s;
    if (data.storage) {
        if (markStoredWebData(m_profile.persistentStoragePath()))
            done += u"Die Daten im Webspeicher werden beim nächsten Start entfernt."_s;
        else
            m_shell.prompt().tell(m_owner,
                                  u"Die Daten im Webspeicher können nicht entfernt werden."_s,
                                  u"Meldung"_s, Prompt::Icon::Exclamation);
    }
    m_shell.statusText(done.trimmed());
}
