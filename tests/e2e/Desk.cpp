#include "tests/e2e/Desk.h"

#include "tests/e2e/WaylandDesk.h"
#include "tests/e2e/X11Desk.h"

#include <QProcess>

Desk& Desk::here()
{
    // It works with the application, and goes with the process.
    static Desk* const desk = qEnvironmentVariableIsSet("WAYLAND_DISPLAY")
                                  ? static_cast<Desk*>(new WaylandDesk)
                                  : new X11Desk;
    return *desk;
}

QByteArray Desk::outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return process.readAllStandardOutput();
}
