#include "pages/asking/CertificateExceptions.h"

#include <algorithm>

bool CertificateExceptions::isAllowed(const QString& host, const QByteArray& digest) const
{
    const QList<CertificateException> all = m_allowed.value(host);
    return std::any_of(all.cbegin(), all.cend(),
                       [&](const CertificateException& one) { return one.digest == digest; });
}

std::optional<CertificateException> CertificateExceptions::allowed(const QString& host) const
{
    const QList<CertificateException> all = m_allowed.value(host);
    return all.isEmpty() ? std::nullopt : std::optional(all.constLast());
}

std::optional<CertificateException> CertificateExceptions::takenBack(const QString& host) const
{
    const auto found = m_takenBack.constFind(host);
    return found == m_takenBack.cend() ? std::nullopt : std::optional(*found);
}

void CertificateExceptions::allow(const CertificateException& exception)
{
    m_takenBack.remove(exception.host);
    m_allowed[exception.host] << exception;
}

void CertificateExceptions::takeBack(const QString& host)
{
    if (const QList<CertificateException> all = m_allowed.take(host); !all.isEmpty())
        m_takenBack.insert(host, all.constLast());
}

void CertificateExceptions::takeBackAll()
{
    const QStringList hosts = m_allowed.keys();
    for (const QString& host : hosts)
        takeBack(host);
}
