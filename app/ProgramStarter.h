#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

/// Starts other programs without waiting for them. Windows ask through this
/// interface only, so that tests see what would be started.
class ProgramStarter {
public:
    ProgramStarter() = default;
    ProgramStarter(const ProgramStarter&) = delete;
    ProgramStarter& operator=(const ProgramStarter&) = delete;
    virtual ~ProgramStarter() = default;

    /// Whether `program` could be started. Its path may hold blanks.
    virtual bool start(const QString& program, const QStringList& arguments) = 0;
};

/// ProgramStarter with real processes.
class ProcessStarter : public ProgramStarter {
public:
    bool start(const QString& program, const QStringList& arguments) override
    {
        return QProcess::startDetached(program, arguments);
    }
};
