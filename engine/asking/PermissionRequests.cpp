#include "engine/asking/PermissionRequests.h"

#include "engine/asking/PagePrompt.h"
#include "engine/page/WebEnginePage.h"
#include "pages/asking/SiteText.h"

#include <QWebEngineFileSystemAccessRequest>
#include <QWebEngineProfile>
#include <QWebEngineRegisterProtocolHandlerRequest>

#if QT_VERSION >= QT_VERSION_CHECK(6, 7, 0)
#include <QAbstractListModel>
#include <QWebEngineDesktopMediaRequest>
#endif
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
#include <QWebEnginePermission>
#else
#include <QWebEngineQuotaRequest>
#endif

using namespace Qt::StringLiterals;

namespace {

#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
using Kind = QWebEnginePermission::PermissionType;
#else
using Kind = QWebEnginePage::Feature;
#endif

/// A document is refused all that it asks for after so many refusals by the user: with
/// frames of ever new sites it could ask for ever.
constexpr int mostRefusals = 5;

std::optional<PermissionKind> kindOf(Kind kind)
{
    switch (kind) {
    case Kind::MediaVideoCapture:
        return PermissionKind::Camera;
    case Kind::MediaAudioCapture:
        return PermissionKind::Microphone;
    case Kind::MediaAudioVideoCapture:
        return PermissionKind::CameraAndMicrophone;
    case Kind::Geolocation:
        return PermissionKind::Location;
    case Kind::Notifications:
        return PermissionKind::Notifications;
    case Kind::DesktopVideoCapture:
    case Kind::DesktopAudioVideoCapture:
        return PermissionKind::Screen;
    case Kind::MouseLock:
        return PermissionKind::Pointer;
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    case Kind::ClipboardReadWrite:
        return PermissionKind::Clipboard;
    case Kind::LocalFontsAccess:
        return PermissionKind::Fonts;
#endif
    default:
        return std::nullopt;
    }
}

} // namespace

PermissionRequests::PermissionRequests(PagePrompt& prompt, QObject* parent)
    : QObject(parent), m_prompt(prompt)
{
    connectRequests();
    connectScreen();
    refuseOthers();
    connect(&prompt.page(), &WebEnginePage::navigationStarting, this,
            [this](const QUrl&, bool isMainFrame) {
                if (isMainFrame) {
                    ++m_document;
                    m_refusals = 0;
                }
            });
}

#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)

void PermissionRequests::forget(QWebEngineProfile& profile, const PermissionMemory& /*memory*/)
{
    const QList<QWebEnginePermission> permissions = profile.listAllPermissions();
    for (const QWebEnginePermission& permission : permissions)
        permission.reset();
}

void PermissionRequests::forget(QWebEngineProfile& profile, const QUrl& site, PermissionKind kind)
{
    const QList<QWebEnginePermission> permissions = profile.listPermissionsForOrigin(site);
    for (const QWebEnginePermission& permission : permissions)
        if (kindOf(permission.permissionType()) == kind)
            permission.reset();
}

void PermissionRequests::connectRequests()
{
    connect(&m_prompt.page(), &QWebEnginePage::permissionRequested, this,
            [this](const QWebEnginePermission& permission) {
                if (const auto kind = kindOf(permission.permissionType()))
                    requested(
                        permission.origin(), *kind, [permission](std::optional<bool> isGranted) {
                            isGranted.value_or(false) ? permission.grant() : permission.deny();
                            if (!isGranted)
                                permission.reset();
                        });
                else
                    permission.deny();
            });
}

#else

void PermissionRequests::forget(QWebEngineProfile& profile, const PermissionMemory& memory)
{
    const QSet<QUrl> sites = memory.sites();
    for (const QUrl& site : sites)
        for (const PermissionKind kind : {PermissionKind::Notifications, PermissionKind::Location})
            forget(profile, site, kind);
}

void PermissionRequests::forget(QWebEngineProfile& profile, const QUrl& site, PermissionKind kind)
{
    QWebEnginePage page(&profile); // any page sets what the whole profile remembers
    // Only these the engine remembers (seen with Qt 6.4).
    for (const Kind feature : {Kind::Notifications, Kind::Geolocation})
        if (kindOf(feature) == kind)
            page.setFeaturePermission(site, feature, QWebEnginePage::PermissionUnknown);
}

void PermissionRequests::connectRequests()
{
    WebEnginePage& page = m_prompt.page();
    connect(&page, &QWebEnginePage::featurePermissionRequested, this,
            [this, &page](const QUrl& site, Kind feature) {
                const Answer answer = [&page, site, feature](std::optional<bool> isGranted) {
                    page.setFeaturePermission(site, feature,
                                              isGranted.value_or(false)
                                                  ? QWebEnginePage::PermissionGrantedByUser
                                                  : QWebEnginePage::PermissionDeniedByUser);
                };
                if (const auto kind = kindOf(feature))
                    requested(site, *kind, answer);
                else
                    answer(false);
            });
}

#endif

void PermissionRequests::connectScreen()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 7, 0)
    // It comes after the user has allowed it, and the question was about the whole screen.
    connect(&m_prompt.page(), &QWebEnginePage::desktopMediaRequested, this,
            [](const QWebEngineDesktopMediaRequest& request) {
                const QAbstractListModel& screens = *request.screensModel();
                if (screens.rowCount() > 0)
                    request.selectScreen(screens.index(0));
                else
                    request.cancel();
            });
#endif
}

void PermissionRequests::refuseOthers()
{
    WebEnginePage& page = m_prompt.page();
#if QT_VERSION < QT_VERSION_CHECK(6, 8, 0)
    connect(&page, &QWebEnginePage::quotaRequested, this,
            [](QWebEngineQuotaRequest request) { request.reject(); });
#endif
    connect(&page, &QWebEnginePage::registerProtocolHandlerRequested, this,
            [](QWebEngineRegisterProtocolHandlerRequest request) { request.reject(); });
    connect(&page, &QWebEnginePage::fileSystemAccessRequested, this,
            [](QWebEngineFileSystemAccessRequest request) { request.reject(); });
}

void PermissionRequests::requested(const QUrl& site, PermissionKind kind, const Answer& answer)
{
    if (const std::optional<bool> known = m_prompt.session().permissions.answer(site, kind)) {
        answer(*known);
        return;
    }
    m_prompt.session().askInTurn(this, [this, site, kind, answer, document = m_document] {
        if (document == m_document && m_refusals < mostRefusals)
            ask(site, kind, answer);
        else
            answer(std::nullopt);
    });
}

void PermissionRequests::ask(const QUrl& site, PermissionKind kind, const Answer& answer)
{
    PermissionMemory& memory = m_prompt.session().permissions;
    // Another window may have asked the same while this question waited for its turn.
    std::optional<bool> isGranted = memory.answer(site, kind);
    if (!isGranted) {
        isGranted = m_prompt
                        .ask({.title = u"Erlaubnis"_s,
                              .text = permissionQuestion(kind, siteName(site)),
                              .accept = u"Erlauben"_s,
                              .refuse = u"Ablehnen"_s,
                              .isRisky = true})
                        .isAccepted;
        // If the page has lost its window, this is no answer of the user's.
        if (m_prompt.page().isRetired()) {
            answer(std::nullopt);
            return;
        }
        memory.remember(site, kind, *isGranted);
        emit m_prompt.session().answersChanged();
        m_refusals += *isGranted ? 0 : 1;
    }
    answer(*isGranted);
}
