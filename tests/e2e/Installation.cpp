#include "tests/e2e/Installation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <unistd.h>

using namespace Qt::StringLiterals;

Installation::Installation() : m_environment(QProcessEnvironment::systemEnvironment())
{
    for (const auto& name : {u"tessera"_s, u"tessera-shell"_s, u"Lizenz.txt"_s})
        QFile::copy(QCoreApplication::applicationDirPath() + u'/' + name, file(name));
    m_environment.insert(u"HOME"_s, m_home.path());
    m_environment.insert(u"XDG_RUNTIME_DIR"_s, m_home.path());
    m_environment.remove(u"XDG_DATA_HOME"_s);
    m_environment.remove(u"XDG_CACHE_HOME"_s);
    // Some versions of the engine describe their graphics at every start.
    m_environment.insert(u"QT_LOGGING_RULES"_s,
                         u"qt.webenginecontext=false;qt.qpa.theme.dbus=false"_s);
    if (::geteuid() == 0)
        m_environment.insert(u"QTWEBENGINE_DISABLE_SANDBOX"_s, u"1"_s);
}

void Installation::prepare(QProcess& process) const
{
    process.setProcessEnvironment(m_environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setWorkingDirectory(QDir::rootPath());
}

void Installation::start(QProcess& process, const QStringList& arguments) const
{
    prepare(process);
    process.start(file(u"tessera"_s), arguments);
}

int Installation::startAndWait(const QStringList& arguments) const
{
    QProcess process;
    start(process, arguments);
    if (!process.waitForFinished(patience))
        return -1;
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
}
