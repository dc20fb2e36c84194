#include "engine/EngineStart.h"

#include "engine/EngineFlags.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 500; // milliseconds

bool isSet(const QDBusConnection& bus, const QString& property)
{
    auto question = QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s,
                                                   u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question << u"org.a11y.Status"_s << property;
    const QDBusReply<QVariant> answer = bus.call(question, QDBus::Block, patience);
    return answer.isValid() && answer.value().toBool();
}

/// As the toolkit itself finds out; it does so too late for the engine.
bool areAssistiveToolsInUse()
{
    if (qEnvironmentVariableIntValue("QT_LINUX_ACCESSIBILITY_ALWAYS_ON") > 0 ||
        !qEnvironmentVariableIsEmpty("AT_SPI_BUS_ADDRESS"))
        return true;
    const QDBusConnection bus = QDBusConnection::sessionBus();
    return bus.isConnected() && bus.interface()->isServiceRegistered(u"org.a11y.Bus"_s) &&
           (isSet(bus, u"IsEnabled"_s) || isSet(bus, u"ScreenReaderEnabled"_s));
}

} // namespace

void announceAssistiveTools()
{
    if (areAssistiveToolsInUse())
        addEngineFlag("--force-renderer-accessibility");
}
