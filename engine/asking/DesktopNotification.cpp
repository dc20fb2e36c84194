#include "engine/asking/DesktopNotification.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace {

/// How long the service may take, in milliseconds, before the program shows the
/// notification itself.
constexpr int patience = 2000;
constexpr int iconSize = 64;
const QString service = u"org.freedesktop.Notifications"_s;
const QString path = u"/org/freedesktop/Notifications"_s;

QDBusMessage callOf(const QString& method)
{
    return QDBusMessage::createMethodCall(service, path, service, method);
}

} // namespace

/// A picture as the service takes it. At file scope, as the library's macro wants it.
struct NotificationPicture {
    QImage image; ///< of the format RGBA8888
};
Q_DECLARE_METATYPE(NotificationPicture)

static QDBusArgument& operator<<(QDBusArgument& argument, const NotificationPicture& picture)
{
    const QImage& image = picture.image;
    argument.beginStructure();
    argument << image.width() << image.height() << int(image.bytesPerLine()) << true << 8 << 4
             << QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes());
    argument.endStructure();
    return argument;
}

static const QDBusArgument& operator>>(const QDBusArgument& argument, NotificationPicture&)
{
    return argument; // the library wants both ways; none ever comes
}

DesktopNotification::DesktopNotification(const QDBusConnection& bus, const Content& content,
                                         QObject* parent)
    : QObject(parent), m_bus(bus), m_content(content)
{
    m_bus.connect(service, path, service, u"ActivationToken"_s, this,
                  SLOT(handleToken(uint, QString)));
    m_bus.connect(service, path, service, u"ActionInvoked"_s, this,
                  SLOT(handleAction(uint, QString)));
    m_bus.connect(service, path, service, u"NotificationClosed"_s, this,
                  SLOT(handleClosed(uint, uint)));
    auto* const answer =
        new QDBusPendingCallWatcher(m_bus.asyncCall(callOf(u"GetCapabilities"_s), patience), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QStringList> reply = *answer;
        answer->deleteLater();
        if (m_isWithdrawn)
            deleteLater();
        else if (reply.isValid())
            send(reply.value());
        else
            emit refused();
    });
}

void DesktopNotification::send(const QStringList& capabilities)
{
    // The site stands first: a long text of its own could push it out of sight.
    QString body = m_content.site + u'\n' + m_content.text;
    if (capabilities.contains(u"body-markup"_s))
        body = body.toHtmlEscaped();
    QString title = m_content.title;
    if (!capabilities.contains(u"body"_s))
        title = m_content.site + u": "_s + title;
    QStringList actions;
    if (capabilities.contains(u"actions"_s))
        actions = {u"default"_s, u"Anzeigen"_s};
    QVariantMap hints{{u"desktop-entry"_s, QGuiApplication::desktopFileName()}};
    if (!m_content.icon.isNull()) {
        qDBusRegisterMetaType<NotificationPicture>();
        const QImage icon = m_content.icon.scaled(iconSize, iconSize, Qt::KeepAspectRatio,
                                                  Qt::SmoothTransformation);
        hints[u"image-data"_s] =
            QVariant::fromValue(NotificationPicture{icon.convertToFormat(QImage::Format_RGBA8888)});
    }
    QDBusMessage call = callOf(u"Notify"_s);
    constexpr int asLongAsUsual = -1;
    call << QGuiApplication::applicationDisplayName() << 0U << QGuiApplication::desktopFileName()
         << title << body << actions << hints << asLongAsUsual;
    auto* const answer = new QDBusPendingCallWatcher(m_bus.asyncCall(call, patience), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<uint> reply = *answer;
        answer->deleteLater();
        if (reply.isValid())
            taken(reply.value());
        else if (m_isWithdrawn)
            deleteLater();
        else
            emit refused();
    });
}

void DesktopNotification::taken(uint id)
{
    m_id = id;
    if (m_isWithdrawn)
        withdraw();
    else
        emit shown();
}

void DesktopNotification::withdraw()
{
    m_isWithdrawn = true;
    if (m_id == 0)
        return;
    QDBusMessage call = callOf(u"CloseNotification"_s);
    call << m_id;
    m_bus.send(call);
    deleteLater();
}

void DesktopNotification::handleToken(uint id, const QString& token) const
{
    // Qt takes a token from this variable only (6.4, 6.8), when a window is activated.
    if (id == m_id && QGuiApplication::platformName().startsWith(u"wayland"_s))
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
}

void DesktopNotification::handleAction(uint id, const QString& action)
{
    if (id == m_id && m_id != 0 && action == "default"_L1)
        emit clicked();
}

void DesktopNotification::handleClosed(uint id, uint /*reason*/)
{
    if (id == m_id && m_id != 0 && !m_isWithdrawn)
        emit closed();
}
