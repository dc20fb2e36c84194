#pragma once

#include <QProcess>
#include <QTemporaryDir>

/// How long the program may take for anything, in milliseconds.
constexpr int patience = 20000;

/// A copy of the program in a folder of its own, with a home of its own.
class Installation {
public:
    Installation();

    QString file(const QString& name) const { return m_folder.filePath(name); }
    QString home() const { return m_home.path(); }
    /// Gives the programs that are started from now on an environment variable.
    void variable(const QString& name, const QString& value) { m_environment.insert(name, value); }
    /// Gives the process the surroundings of the program.
    void prepare(QProcess& process) const;
    void start(QProcess& process, const QStringList& arguments) const;
    /// Starts another copy and waits for its end: its exit code, or below 0.
    int startAndWait(const QStringList& arguments) const;

private:
    QTemporaryDir m_folder;
    QTemporaryDir m_home;
    QProcessEnvironment m_environment;
};
