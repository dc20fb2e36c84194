#include "app/LogoutDelay.h"

#include "engine/page/SessionBus.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace {
const QString portal = u"org.freedesktop.portal.Desktop"_s;
constexpr uint loggingOut = 1; // a flag of the portal's
} // namespace

void LogoutDelay::setReason(const QString& reason)
{
    m_reason = reason;
    follow();
}

void LogoutDelay::follow()
{
    if (m_isWaiting || m_reason == m_told)
        return;
    const std::optional<QDBusConnection> bus = sessionBus();
    if (!m_request.path().isEmpty() && bus)
        bus->send(QDBusMessage::createMethodCall(portal, m_request.path(),
                                                 u"org.freedesktop.portal.Request"_s, u"Close"_s));
    m_request = {};
    m_told = m_reason;
    if (!m_told.isEmpty() && bus)
        hold(*bus);
}

void LogoutDelay::hold(const QDBusConnection& bus)
{
    auto call = QDBusMessage::createMethodCall(portal, u"/org/freedesktop/portal/desktop"_s,
                                               u"org.freedesktop.portal.Inhibit"_s, u"Inhibit"_s);
    call << QString() << loggingOut << QVariantMap{{u"reason"_s, m_told}};
    m_isWaiting = true;
    auto* const answer = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusObjectPath> reply = *answer;
        answer->deleteLater();
        m_isWaiting = false;
        if (reply.isValid())
            m_request = reply.value();
        follow();
    });
}
