#pragma once

#include <QList>

/// The process `root` and all that descend from it.
QList<qint64> processTree(qint64 root);

/// In KiB.
struct Memory {
    /// What several processes share counts once (proportional set size). What is
    /// shared with others that come and go makes it go up and down.
    qint64 proportional = 0;
    /// The part of it that no file holds: what the processes have asked for.
    qint64 anonymous = 0;
};

/// The memory of all these. Processes that have gone count nothing.
Memory memoryOf(const QList<qint64>& processes);

/// The processor time that these have used so far, in seconds. Processes that have gone count
/// nothing.
double processorTimeOf(const QList<qint64>& processes);
