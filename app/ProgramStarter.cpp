#include "app/ProgramStarter.h"

#include <QProcess>

bool ProcessStarter::start(const QString& program, const QStringList& arguments)
{
    return QProcess::startDetached(program, arguments);
}
