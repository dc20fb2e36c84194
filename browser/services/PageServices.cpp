#include "browser/services/PageServices.h"

#include "browser/WebEnginePage.h"
#include "browser/services/CertificateErrors.h"
#include "browser/services/CrashNotice.h"
#include "browser/services/DesktopLinks.h"
#include "browser/services/LogInRequests.h"
#include "browser/services/PermissionRequests.h"
#include "browser/services/ScriptDialogs.h"

PageServices::PageServices(Shell& shell, QWidget* window, QWebEngineView* view, WebEnginePage* page,
                           QuestionDesk& desk)
    : QObject(page), m_asking(desk, shell, window, *page)
{
    new LogInRequests(m_asking, this);
    new CertificateErrors(m_asking, this);
    new PermissionRequests(m_asking, this);
    new ScriptDialogs(m_asking, this);
    new DesktopLinks(m_asking, view, this);
    new CrashNotice(*page, view, this);
}
