#include "browser/services/CertificateErrors.h"

#include "browser/WebEnginePage.h"
#include "browser/services/AskingPage.h"
#include "browser/services/QuestionDesk.h"
#include "browser/services/SiteText.h"

#include <QSslCertificate>
#include <QWebEngineCertificateError>

using namespace Qt::StringLiterals;

namespace {

using Error = QWebEngineCertificateError;

QString problem(Error::Type type)
{
    switch (type) {
    case Error::CertificateCommonNameInvalid:
        return u"Das Zertifikat gehört zu einem anderen Namen."_s;
    case Error::CertificateDateInvalid:
        return u"Das Zertifikat ist abgelaufen oder noch nicht gültig."_s;
    case Error::CertificateAuthorityInvalid:
        return u"Das Zertifikat stammt von einer Stelle, der dieser Rechner nicht vertraut."_s;
    case Error::CertificateNoRevocationMechanism:
    case Error::CertificateUnableToCheckRevocation:
        return u"Ob das Zertifikat gesperrt ist, lässt sich nicht prüfen."_s;
    case Error::CertificateRevoked:
        return u"Das Zertifikat ist gesperrt."_s;
    case Error::CertificateWeakSignatureAlgorithm:
        return u"Das Zertifikat ist mit einem veralteten Verfahren unterschrieben."_s;
    case Error::CertificateNonUniqueName:
        return u"Das Zertifikat gilt für einen Namen, der nicht eindeutig ist."_s;
    case Error::CertificateWeakKey:
        return u"Der Schlüssel des Zertifikats ist zu schwach."_s;
    case Error::CertificateNameConstraintViolation:
        return u"Die Stelle darf für diesen Namen keine Zertifikate ausstellen."_s;
    case Error::CertificateValidityTooLong:
        return u"Das Zertifikat ist länger gültig, als erlaubt ist."_s;
    case Error::CertificateTransparencyRequired:
        return u"Das Zertifikat steht in keinem öffentlichen Verzeichnis."_s;
    case Error::CertificateSymantecLegacy:
        return u"Der Stelle, die das Zertifikat ausgestellt hat, wird nicht mehr vertraut."_s;
    case Error::CertificateKnownInterceptionBlocked:
        return u"Das Zertifikat dient dazu, Verbindungen abzuhören."_s;
    case Error::SslPinnedKeyNotInCertificateChain:
        return u"Der Server hat einen anderen Schlüssel als den, den er angekündigt hat."_s;
    case Error::SslObsoleteVersion:
        return u"Der Server verschlüsselt nach einem veralteten Verfahren."_s;
    default:
        return u"Das Zertifikat ist fehlerhaft."_s;
    }
}

QByteArray keyOf(const Error& error)
{
    const QList<QSslCertificate> chain = error.certificateChain();
    const QByteArray digest =
        chain.isEmpty() ? QByteArray() : chain.constFirst().digest(QCryptographicHash::Sha256);
    const QByteArray server =
        error.url().host().toUtf8() + ':' + QByteArray::number(error.url().port()) + ' ';
    return server + digest;
}

PageQuestion question(const Error& error)
{
    const QString start = u"%1 kann nicht nachweisen, der richtige Server zu sein.\n\n%2\n\n"_s.arg(
        siteName(error.url()), problem(error.type()));
    if (!error.isOverridable()) {
        return {.title = u"Unsichere Verbindung"_s,
                .text = start + u"Die Seite lässt sich nicht öffnen."_s};
    }
    return {.title = u"Unsichere Verbindung"_s,
            .text = start + u"Andere könnten mitlesen und verändern, was übertragen wird. "
                            "Die Seite trotzdem öffnen?"_s,
            .accept = u"Trotzdem öffnen"_s,
            .refuse = u"Abbrechen"_s,
            .isRisky = true};
}

} // namespace

CertificateErrors::CertificateErrors(AskingPage& asking, QObject* parent)
    : QObject(parent), m_asking(asking)
{
    connect(&asking.page(), &WebEnginePage::navigationStarting, this,
            [this](const QUrl& url, bool isMainFrame) {
                if (isMainFrame) {
                    m_target = url;
                }
            });
    connect(&asking.page(), &QWebEnginePage::certificateError, this, &CertificateErrors::met);
}

bool CertificateErrors::isOfPage(const QUrl& url) const
{
    return url.matches(m_target, QUrl::RemoveFragment);
}

bool CertificateErrors::isTrusted(const Error& error) const
{
    // Trusted once, a certificate may turn out to be worse: revoked, say.
    return error.isOverridable() && m_asking.desk().trustedCertificates.contains(keyOf(error));
}

void CertificateErrors::met(Error error)
{
    if (isTrusted(error)) {
        error.acceptCertificate();
    } else if (!isOfPage(error.url())) {
        error.rejectCertificate();
    } else {
        error.defer();
        m_asking.whenItIsOurTurn(this, [this, error] { ask(error); });
    }
}

void CertificateErrors::ask(Error error)
{
    if (!isTrusted(error) && isOfPage(error.url())) { // not answered, nor moved on, meanwhile
        const PageAnswer answer = m_asking.ask(question(error));
        if (answer.isAccepted && error.isOverridable()) {
            m_asking.desk().trustedCertificates.insert(keyOf(error));
        }
    }
    if (isTrusted(error)) {
        error.acceptCertificate();
    } else {
        error.rejectCertificate();
    }
}
