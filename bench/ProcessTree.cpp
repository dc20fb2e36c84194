#include "bench/ProcessTree.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

namespace {

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// What the system says of a process behind its name: its state, its parent, and so on.
QList<QByteArray> statusOf(const QString& process)
{
    const QByteArray text = contentOf(QStringLiteral("/proc/%1/stat").arg(process));
    // The name of the program, in brackets, may hold anything.
    return text.mid(text.lastIndexOf(')') + 2).split(' ');
}

qint64 parentOf(const QString& process)
{
    return statusOf(process).value(1).toLongLong();
}

} // namespace

QList<qint64> processTree(qint64 root)
{
    QMultiHash<qint64, qint64> children;
    for (const QString& name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs))
        if (const qint64 process = name.toLongLong(); process > 0)
            children.insert(parentOf(name), process);
    QList<qint64> tree = {root};
    for (qsizetype i = 0; i < tree.size(); ++i)
        tree += children.values(tree.at(i));
    return tree;
}

Memory memoryOf(const QList<qint64>& processes)
{
    Memory sum;
    for (const qint64 process : processes) {
        const QByteArray text = contentOf(QStringLiteral("/proc/%1/smaps_rollup").arg(process));
        for (const QByteArray& line : text.split('\n')) {
            const qint64 size =
                line.mid(line.indexOf(':') + 1).trimmed().split(' ').first().toLongLong();
            if (line.startsWith("Pss:"))
                sum.proportional += size;
            else if (line.startsWith("Pss_Anon:"))
                sum.anonymous += size;
        }
    }
    return sum;
}

double processorTimeOf(const QList<qint64>& processes)
{
    qint64 ticks = 0;
    for (const qint64 process : processes) {
        const QList<QByteArray> status = statusOf(QString::number(process));
        ticks += status.value(11).toLongLong() + status.value(12).toLongLong(); // user, system
    }
    return static_cast<double>(ticks) / static_cast<double>(::sysconf(_SC_CLK_TCK));
}
