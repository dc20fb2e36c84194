#include "engine/asking/CertificateErrors.h"

#include "engine/asking/PagePrompt.h"
#include "engine/page/WebEnginePage.h"
#include "engine/page/WebErrorPage.h"
#include "pages/asking/SiteText.h"

#include <QSslCertificate>
#include <QWebEngineCertificateError>
#include <QWebEngineScript>

using namespace Qt::StringLiterals;

namespace {

using CertificateError = QWebEngineCertificateError;

QString problem(CertificateError::Type type)
{
    switch (type) {
    case CertificateError::CertificateCommonNameInvalid:
        return u"Das Zertifikat gehört zu einem anderen Namen."_s;
    case CertificateError::CertificateDateInvalid:
        return u"Das Zertifikat ist abgelaufen oder noch nicht gültig."_s;
    case CertificateError::CertificateAuthorityInvalid:
        return u"Das Zertifikat stammt von einer Stelle, der dieser Rechner nicht vertraut."_s;
    case CertificateError::CertificateNoRevocationMechanism:
    case CertificateError::CertificateUnableToCheckRevocation:
        return u"Ob das Zertifikat gesperrt ist, lässt sich nicht prüfen."_s;
    case CertificateError::CertificateRevoked:
        return u"Das Zertifikat ist gesperrt."_s;
    case CertificateError::CertificateWeakSignatureAlgorithm:
        return u"Das Zertifikat ist mit einem veralteten Verfahren unterschrieben."_s;
    case CertificateError::CertificateNonUniqueName:
        return u"Das Zertifikat gilt für einen Namen, der nicht eindeutig ist."_s;
    case CertificateError::CertificateWeakKey:
        return u"Der Schlüssel des Zertifikats ist zu schwach."_s;
    case CertificateError::CertificateNameConstraintViolation:
        return u"Die Stelle darf für diesen Namen keine Zertifikate ausstellen."_s;
    case CertificateError::CertificateValidityTooLong:
        return u"Das Zertifikat ist länger gültig, als erlaubt ist."_s;
    case CertificateError::CertificateTransparencyRequired:
        return u"Das Zertifikat steht in keinem öffentlichen Verzeichnis."_s;
    case CertificateError::CertificateSymantecLegacy:
        return u"Der Stelle, die das Zertifikat ausgestellt hat, wird nicht mehr vertraut."_s;
    case CertificateError::CertificateKnownInterceptionBlocked:
        return u"Das Zertifikat dient dazu, Verbindungen abzuhören."_s;
    case CertificateError::SslPinnedKeyNotInCertificateChain:
        return u"Der Server hat einen anderen Schlüssel als den, den er angekündigt hat."_s;
    case CertificateError::SslObsoleteVersion:
        return u"Der Server verschlüsselt nach einem veralteten Verfahren."_s;
    default:
        return u"Das Zertifikat ist fehlerhaft."_s;
    }
}

QString statement(const CertificateError& error)
{
    return u"%1 kann nicht nachweisen, der richtige Server zu sein.\n\n%2"_s.arg(
        siteName(error.url()), problem(error.type()));
}

Prompt::Question question(const QString& statement, bool isOverridable)
{
    const QString start = statement + u"\n\n"_s;
    if (!isOverridable) {
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

QByteArray digestOf(const CertificateError& error)
{
    const QList<QSslCertificate> chain = error.certificateChain();
    return chain.isEmpty() ? QByteArray() : chain.constFirst().digest(QCryptographicHash::Sha256);
}

QString issuerOf(const QSslCertificate& certificate)
{
    const QString name = cleanLine(certificate.issuerDisplayName());
    return certificate.isSelfSigned() ? u"%1 (der Server selbst)"_s.arg(name) : name;
}

CertificateException exceptionFor(const CertificateError& error)
{
    const QList<QSslCertificate> chain = error.certificateChain();
    const QSslCertificate own = chain.isEmpty() ? QSslCertificate() : chain.constFirst();
    return {.host = error.url().host(),
            .digest = digestOf(error),
            .statement = statement(error),
            .problem = problem(error.type()),
            .issuer = issuerOf(own),
            .until = own.expiryDate()};
}

} // namespace

CertificateErrors::CertificateErrors(PagePrompt& prompt, QObject* parent)
    : QObject(parent), m_prompt(prompt)
{
    connect(&prompt.page(), &WebEnginePage::navigationStarting, this,
            [this](const QUrl& url, bool isMainFrame) {
                if (isMainFrame) {
                    m_target = url;
                    m_refused.clear();
                }
            });
    connect(&prompt.page(), &WebEnginePage::frameReported, this, &CertificateErrors::explain);
    connect(&prompt.page(), &QWebEnginePage::certificateError, this, &CertificateErrors::occurred);
}

bool CertificateErrors::isOfPage(const QUrl& url) const
{
    return url.matches(m_target, QUrl::RemoveFragment);
}

bool CertificateErrors::isTrusted(const CertificateError& error) const
{
    // A certificate that the user trusts may meet an error later that cannot be overridden:
    // it may have been revoked, say.
    return error.isOverridable() &&
           m_prompt.session().certificates.isAllowed(error.url().host(), digestOf(error));
}

void CertificateErrors::occurred(CertificateError error)
{
    if (isTrusted(error)) {
        error.acceptCertificate();
    } else if (!isOfPage(error.url())) {
        error.rejectCertificate();
    } else {
        error.defer();
        m_prompt.session().askInTurn(this, [this, error] { ask(error); });
    }
}

void CertificateErrors::ask(CertificateError error)
{
    // Meanwhile another page may have asked about this server, or this one have gone on.
    if (!isTrusted(error) && isOfPage(error.url())) {
        const Prompt::Answer answer =
            m_prompt.ask(question(statement(error), error.isOverridable()));
        if (answer.isAccepted && error.isOverridable()) {
            m_prompt.session().certificates.allow(exceptionFor(error));
            emit m_prompt.session().answersChanged();
        }
    }
    if (isTrusted(error)) {
        error.acceptCertificate();
    } else {
        m_refused = statement(error);
        error.rejectCertificate();
    }
}

void CertificateErrors::explain(const FrameReport& report)
{
    if (!report.isMainFrame || !WebErrorPage::isEnginesOwn(report.address))
        return;
    const auto takenBack = m_prompt.session().certificates.takenBack(m_target.host());
    if (takenBack && m_target.scheme() == "https"_L1 && m_refused.isEmpty()) {
        m_refused = takenBack->statement;
        askAnew();
    }
    if (m_refused.isEmpty())
        return;
    // The engine's page says that the site is out of order at present. It gets other words,
    // but is not replaced: it keeps its place in the history, and "reload" asks again.
    m_prompt.page().runJavaScript(WebErrorPage::replacement(m_refused),
                                  QWebEngineScript::ApplicationWorld);
}

void CertificateErrors::askAnew()
{
    m_prompt.session().askInTurn(this, [this, url = m_target] {
        CertificateExceptions& certificates = m_prompt.session().certificates;
        const auto exception = certificates.takenBack(url.host());
        if (!isOfPage(url) ||
            (exception && !m_prompt.ask(question(exception->statement, true)).isAccepted))
            return;
        if (exception) { // else another page has asked about this server meanwhile
            certificates.allow(*exception);
            emit m_prompt.session().answersChanged();
        }
        if (!m_prompt.page().isRetired())
            m_prompt.page().triggerAction(QWebEnginePage::Reload);
    });
}
