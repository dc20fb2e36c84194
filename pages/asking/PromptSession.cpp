#include "pages/asking/PromptSession.h"

void PromptSession::forgetAnswers()
{
    permissions.clear();
    certificates.takeBackAll();
    desktopSchemes.clear();
    emit answersChanged();
}

void PromptSession::takeBackPermission(const QUrl& site, PermissionKind kind)
{
    permissions.forget(site, kind);
    emit permissionTakenBack(site, kind);
    emit answersChanged();
}

void PromptSession::takeBackCertificate(const QString& host)
{
    certificates.takeBack(host);
    emit answersChanged();
}

void PromptSession::takeBackDesktopScheme(const QString& scheme)
{
    desktopSchemes.remove(scheme);
    emit answersChanged();
}
