#include "app/Launcher.h"

#include <QProcess>

bool ProcessLauncher::start(const QString& program, const QStringList& arguments)
{
    return QProcess::startDetached(program, arguments);
}
