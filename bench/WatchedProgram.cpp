#include "bench/WatchedProgram.h"

#include "bench/ProcessTree.h"
#include "bench/Report.h"
#include "bench/Waiting.h"

#include <QDir>

namespace {
constexpr int patience = 120000;
constexpr int settling = 4000;
} // namespace

WatchedProgram::WatchedProgram(const QString& path, const QStringList& arguments)
{
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.start(path, arguments);
    if (!m_process.waitForStarted())
        throw BenchError("cannot be started: " + path.toStdString());
}

WatchedProgram::~WatchedProgram()
{
    m_process.terminate();
    if (!m_process.waitForFinished(patience))
        m_process.kill();
}

double WatchedProgram::mebibytes() const
{
    runFor(settling);
    return static_cast<double>(memoryOf(processTree(id())).proportional) / 1024;
}

int WatchedProgram::descriptors() const
{
    const QDir open(QStringLiteral("/proc/%1/fd").arg(id()));
    return static_cast<int>(open.entryList(QDir::Files | QDir::System).size());
}
