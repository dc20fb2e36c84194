#include "engine/ProfileServices.h"

#include "base/Prompt.h"
#include "base/RunCommand.h"
#include "engine/asking/Notifications.h"
#include "pages/asking/PromptSession.h"
#include "pages/downloads/frmDownloads.h"
#include "pages/viewing/StoredWebData.h"
#include "pages/viewing/frmBrowserData.h"

#include <QDesktopServices>
#include <QWebEngineCookieStore>
#include <QWebEngineProfile>

using namespace Qt::StringLiterals;

ProfileServices::ProfileServices(Shell& shell, QWidget* owner, QWebEngineProfile& profile,
                                 PromptSession& session)
    : m_shell(shell), m_owner(owner), m_profile(profile), m_session(session),
      m_downloads(shell, owner, profile, session, m_table)
{
    new Notifications(profile, this);
    connect(&m_downloads, &WebDownloads::accepted, this, [this] { downloadsWindow().showQuietly(); });
}

ProfileServices::~ProfileServices()
{
    delete m_window; // it shows the table
}

frmDownloads& ProfileServices::downloadsWindow()
{
    if (!m_window)
        m_window = new frmDownloads(m_shell, m_owner, m_table, &QDesktopServices::openUrl);
    return *m_window;
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
    // The active window may show a page on the whole screen, which can end meanwhile.
    frmBrowserData dialog(m_owner);
    if (dialog.exec() == QDialog::Accepted)
        forget(dialog.chosen());
}

void ProfileServices::forget(const BrowserData& data)
{
    if (data.cookies)
        m_profile.cookieStore()->deleteAllCookies();
    if (data.cache)
        m_profile.clearHttpCache();
    if (data.visitedLinks)
        m_profile.clearAllVisitedLinks();
    if (data.permissions)
        emit permissionsForgotten();
    if (data.storage && !markStoredWebData(m_profile.persistentStoragePath())) {
        m_shell.prompt().tell(m_owner, u"Die Daten im Webspeicher können nicht entfernt werden."_s,
                              u"Meldung"_s, Prompt::Icon::Exclamation);
    }
}

bool ProfileServices::mayEnd()
{
    const int running = m_table.openCount();
    if (running > 0) {
        const QString text =
            running == 1
                ? u"Ein Download ist noch nicht fertig. Trotzdem beenden und ihn abbrechen?"_s
                : u"%1 Downloads sind noch nicht fertig. Trotzdem beenden und sie abbrechen?"_s.arg(
                      running);
        const PromptSession::Hold hold(m_session);
        const DropsDisabled guard(m_shell);
        if (!m_shell.prompt().askYesNo(m_owner, text, u"Meldung"_s, Prompt::Icon::Question))
            return false;
    }
    m_table.cancelAll();
    return true;
}
