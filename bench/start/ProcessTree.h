#pragma once

#include <QList>

/// The process `root` and all that descend from it.
QList<qint64> processTree(qint64 root);

/// The memory of the processes in KiB: what several of them share counts once
/// (proportional set size). Processes that have gone count nothing.
qint64 proportionalMemory(const QList<qint64>& processes);
