#include "engine/page/SessionBus.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

constexpr const char* addressVariable = "DBUS_SESSION_BUS_ADDRESS";

/// Whether the desktop says where its bus is, or has it in its usual place.
bool isSessionBusRunning()
{
    const QString runtimeFolder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !qEnvironmentVariableIsEmpty(addressVariable) ||
           (!runtimeFolder.isEmpty() && QFileInfo::exists(runtimeFolder + u"/bus"_s));
}

} // namespace

std::optional<QDBusConnection> sessionBus()
{
    if (!isSessionBusRunning())
        return {};
    const QDBusConnection bus = QDBusConnection::sessionBus();
    return bus.isConnected() ? std::optional(bus) : std::nullopt;
}

void startNoSessionBus()
{
    if (isSessionBusRunning())
        return;
    qputenv(addressVariable, "disabled:");
    QDBusConnection::sessionBus(); // fails, and is not tried again
    qunsetenv(addressVariable);
}
