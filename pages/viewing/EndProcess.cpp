#include "pages/viewing/EndProcess.h"

#include <QFile>

#include <csignal>
#include <unistd.h>

extern "C" { // the header of glibc 2.36 forgets to say so
#include <sys/pidfd.h>
}

using namespace Qt::StringLiterals;

namespace {

/// 0 when there is no such process.
qint64 parentOf(qint64 pid)
{
    QFile file(u"/proc/%1/stat"_s.arg(pid));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    // "number (name) state parent ...": the name may hold blanks and brackets.
    const QByteArray line = file.readAll();
    return line.mid(line.lastIndexOf(')') + 2).split(' ').value(1).toLongLong();
}

bool isDescendant(qint64 pid)
{
    qint64 ancestor = pid;
    while (ancestor > 1 && ancestor != ::getpid())
        ancestor = parentOf(ancestor);
    return pid != ::getpid() && ancestor == ::getpid();
}

} // namespace

bool endDescendant(qint64 pid)
{
    // The descriptor stands for the process itself. Its number could go to another one between
    // the look at its parents and the signal.
    const int process = pid > 0 ? ::pidfd_open(static_cast<pid_t>(pid), 0) : -1;
    if (process < 0)
        return false;
    const bool isEnded =
        isDescendant(pid) && ::pidfd_send_signal(process, SIGKILL, nullptr, 0) == 0;
    ::close(process);
    return isEnded;
}
