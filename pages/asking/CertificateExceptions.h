#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QList>
#include <QString>

#include <optional>

/// A certificate that the user trusts though the engine does not.
struct CertificateException {
    QString host;
    QByteArray digest = {};
    /// What the user was told: who cannot prove what, and why.
    QString statement = {};
    /// Only the why.
    QString problem = {};
    QString issuer = {};
    QDateTime until = {};
};

/// The exceptions of one run, for each host: the engine, too, makes no difference between the
/// ports of one (seen with Qt 6.4). An exception that was taken back is kept, so that the user
/// can be asked again: the engine goes on trusting the certificate for as long as it runs.
class CertificateExceptions {
public:
    bool isAllowed(const QString& host, const QByteArray& digest) const;
    /// The exception that holds for a host, the latest of several.
    std::optional<CertificateException> allowed(const QString& host) const;
    /// The exception for a host that was taken back, and has not been made anew.
    std::optional<CertificateException> takenBack(const QString& host) const;
    bool hasTakenBack() const { return !m_takenBack.isEmpty(); }

    void allow(const CertificateException& exception);
    void takeBack(const QString& host);
    void takeBackAll();

private:
    QHash<QString, QList<CertificateException>> m_allowed;
    QHash<QString, CertificateException> m_takenBack;
};
