#include "bench/ProcessTree.h"

#include <QDir>
#include <QFile>

namespace {

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

qint64 parentOf(const QString& process)
{
    const QByteArray text = contentOf(QStringLiteral("/proc/%1/stat").arg(process));
    // The name of the program, in brackets, may hold anything.
    return text.mid(text.lastIndexOf(')') + 2).split(' ').value(1).toLongLong();
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
