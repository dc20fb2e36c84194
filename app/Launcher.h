#pragma once

#include <QString>
#include <QStringList>

/// Starts other programs without waiting for them. Windows ask through this
/// face only, so that tests see what would be started.
class Launcher {
public:
    Launcher() = default;
    Launcher(const Launcher&) = delete;
    Launcher& operator=(const Launcher&) = delete;
    virtual ~Launcher() = default;

    /// Whether `program` could be started. Its path may hold blanks.
    virtual bool start(const QString& program, const QStringList& arguments) = 0;
};

/// Launcher with real processes.
class ProcessLauncher : public Launcher {
public:
    bool start(const QString& program, const QStringList& arguments) override;
};
