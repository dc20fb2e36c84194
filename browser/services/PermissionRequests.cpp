#include "browser/services/PermissionRequests.h"

#include "browser/WebEnginePage.h"
#include "browser/services/AskingPage.h"
#include "browser/services/QuestionDesk.h"
#include "browser/services/SiteText.h"

#include <QWebEngineFileSystemAccessRequest>
#include <QWebEngineRegisterProtocolHandlerRequest>

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

/// Frames of ever new sites could ask for ever.
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

PermissionRequests::PermissionRequests(AskingPage& asking, QObject* parent)
    : QObject(parent), m_asking(asking)
{
    connectRequests();
    refuseOthers();
    connect(&asking.page(), &WebEnginePage::navigationStarting, this,
            [this](const QUrl&, bool isMainFrame) {
                if (isMainFrame) {
                    ++m_document;
                    m_refusals = 0;
                }
            });
}

#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)

void PermissionRequests::connectRequests()
{
    connect(&m_asking.page(), &QWebEnginePage::permissionRequested, this,
            [this](const QWebEnginePermission& permission) {
                if (const auto kind = kindOf(permission.permissionType())) {
                    requested(permission.origin(), *kind, [permission](bool isGranted) {
                        isGranted ? permission.grant() : permission.deny();
                    });
                } else {
                    permission.deny();
                }
            });
}

#else

void PermissionRequests::connectRequests()
{
    WebEnginePage& page = m_asking.page();
    connect(&page, &QWebEnginePage::featurePermissionRequested, this,
            [this, &page](const QUrl& site, Kind feature) {
                const Answer answer = [&page, site, feature](bool isGranted) {
                    page.setFeaturePermission(site, feature,
                                              isGranted ? QWebEnginePage::PermissionGrantedByUser
                                                        : QWebEnginePage::PermissionDeniedByUser);
                };
                if (const auto kind = kindOf(feature)) {
                    requested(site, *kind, answer);
                } else {
                    answer(false);
                }
            });
}

#endif

void PermissionRequests::refuseOthers()
{
    WebEnginePage& page = m_asking.page();
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
    if (const std::optional<bool> known = m_asking.desk().permissions.answer(site, kind)) {
        answer(*known);
        return;
    }
    m_asking.whenItIsOurTurn(this, [this, site, kind, answer, document = m_document] {
        if (document == m_document && m_refusals < mostRefusals) {
            ask(site, kind, answer);
        } else {
            answer(false);
        }
    });
}

void PermissionRequests::ask(const QUrl& site, PermissionKind kind, const Answer& answer)
{
    PermissionMemory& memory = m_asking.desk().permissions;
    std::optional<bool> isGranted = memory.answer(site, kind); // meanwhile, by another window
    if (!isGranted) {
        isGranted = m_asking
                        .ask({.title = u"Erlaubnis"_s,
                              .text = permissionQuestion(kind, siteName(site)),
                              .accept = u"Erlauben"_s,
                              .refuse = u"Ablehnen"_s,
                              .isRisky = true})
                        .isAccepted;
        if (!m_asking.page().isRetired()) { // else nobody has said anything
            memory.remember(site, kind, *isGranted);
            m_refusals += *isGranted ? 0 : 1;
        }
    }
    answer(*isGranted);
}
