#pragma once

#include <QProcess>

/// A program that is measured from outside, started by this object and ended with it.
class WatchedProgram {
public:
    /// Throws BenchError when it cannot be started.
    WatchedProgram(const QString& path, const QStringList& arguments);
    ~WatchedProgram();
    Q_DISABLE_COPY_MOVE(WatchedProgram)

    qint64 id() const { return m_process.processId(); }
    /// What it and its processes hold when they have come to rest, in MiB (PSS).
    double mebibytes() const;
    /// How many descriptors the program itself has open.
    int descriptors() const;

private:
    QProcess m_process;
};
