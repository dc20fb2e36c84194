#include "pages/asking/PermissionMemory.h"

using namespace Qt::StringLiterals;

namespace {

QPair<QUrl, int> keyOf(const QUrl& site, PermissionKind kind)
{
    QUrl origin;
    origin.setScheme(site.scheme());
    origin.setHost(site.host());
    origin.setPort(site.port());
    return {origin, static_cast<int>(kind)};
}

QString purpose(PermissionKind kind)
{
    switch (kind) {
    case PermissionKind::Camera:
        return u"die Kamera benutzen"_s;
    case PermissionKind::Microphone:
        return u"das Mikrofon benutzen"_s;
    case PermissionKind::CameraAndMicrophone:
        return u"die Kamera und das Mikrofon benutzen"_s;
    case PermissionKind::Location:
        return u"Ihren Standort erfahren"_s;
    case PermissionKind::Notifications:
        return u"Mitteilungen anzeigen"_s;
    case PermissionKind::Screen:
        return u"den Inhalt des Bildschirms aufnehmen"_s;
    case PermissionKind::Pointer:
        return u"den Mauszeiger festhalten (Esc gibt ihn wieder frei)"_s;
    case PermissionKind::Clipboard:
        return u"die Zwischenablage lesen"_s;
    case PermissionKind::Fonts:
        return u"die Liste der installierten Schriften lesen"_s;
    }
    return {};
}

} // namespace

QString permissionQuestion(PermissionKind kind, const QString& site)
{
    return u"%1 möchte %2. Erlauben Sie das?"_s.arg(site, purpose(kind));
}

QString permissionAnswer(PermissionKind kind, bool isGranted)
{
    return (isGranted ? u"Erlaubt: %1"_s : u"Abgelehnt: %1"_s).arg(purpose(kind));
}

std::optional<bool> PermissionMemory::answer(const QUrl& site, PermissionKind kind) const
{
    if (const auto known = m_answers.constFind(keyOf(site, kind)); known != m_answers.cend())
        return *known;
    if (kind != PermissionKind::CameraAndMicrophone)
        return std::nullopt;
    const std::optional<bool> camera = answer(site, PermissionKind::Camera);
    const std::optional<bool> microphone = answer(site, PermissionKind::Microphone);
    if (camera == false || microphone == false)
        return false;
    return camera && microphone ? std::optional(true) : std::nullopt;
}

void PermissionMemory::remember(const QUrl& site, PermissionKind kind, bool isGranted)
{
    m_answers.insert(keyOf(site, kind), isGranted);
    if (kind == PermissionKind::CameraAndMicrophone && isGranted) {
        remember(site, PermissionKind::Camera, true);
        remember(site, PermissionKind::Microphone, true);
    }
}

QList<std::pair<PermissionKind, bool>> PermissionMemory::answers(const QUrl& site) const
{
    QList<std::pair<PermissionKind, bool>> all;
    for (int i = 0; i <= static_cast<int>(PermissionKind::Fonts); ++i) {
        const auto kind = static_cast<PermissionKind>(i);
        const auto known = m_answers.constFind(keyOf(site, kind));
        const bool isImplied =
            known != m_answers.cend() && *known && kind == PermissionKind::CameraAndMicrophone;
        if (known != m_answers.cend() && !isImplied)
            all.append({kind, *known});
    }
    return all;
}

void PermissionMemory::forget(const QUrl& site, PermissionKind kind)
{
    m_answers.remove(keyOf(site, kind));
    if (kind == PermissionKind::Camera || kind == PermissionKind::Microphone)
        m_answers.remove(keyOf(site, PermissionKind::CameraAndMicrophone));
}

QSet<QUrl> PermissionMemory::sites() const
{
    QSet<QUrl> all;
    for (auto known = m_answers.keyBegin(); known != m_answers.keyEnd(); ++known)
        all.insert(known->first);
    return all;
}
