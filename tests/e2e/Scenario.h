#pragma once

#include "tests/Files.h"
#include "tests/e2e/LoopbackServer.h"
#include "tests/e2e/User.h"

#include <QDir>
#include <QTemporaryDir>

#include <memory>
#include <unistd.h>

/// How long the program may take for anything, in milliseconds.
constexpr int patience = 20000;

// A caption comes and goes while a page is loading, and a page that has just come up may be white
// once more for 50 ms, when it gets its size: once is enough.
#define QTRY_SEES(what) QVERIFY(QTest::qWaitFor([&] { return User::sees(what); }, patience))
#define QTRY_COLOUR(place, colour)                                                                 \
    QVERIFY2(QTest::qWaitFor([&] { return User::colourAt(place) == QColor(colour); }, patience),   \
             qPrintable(User::colourAt(place).name()))

/// A copy of the program in a folder of its own, with a home of its own.
class Installation {
public:
    Installation()
    {
        QDir(m_folder.path()).mkdir(QStringLiteral("lib"));
        for (const char* name : {"tessera", "lib/tessera-shell.so", "Lizenz.txt"})
            QFile::copy(QDir(QCoreApplication::applicationDirPath()).filePath(QLatin1String(name)),
                        file(QLatin1String(name)));
        m_environment.remove(QStringLiteral("XDG_DATA_HOME"));
        m_environment.remove(QStringLiteral("XDG_CACHE_HOME"));
        variable("HOME", home());
        variable("XDG_RUNTIME_DIR", home());
        // Qt 6.8 complains of a desktop without a bus.
        variable("QT_LOGGING_RULES", QStringLiteral("qt.qpa.theme.dbus=false"));
        if (::geteuid() == 0)
            variable("QTWEBENGINE_DISABLE_SANDBOX", QStringLiteral("1"));
    }

    QString file(const QString& name) const { return m_folder.filePath(name); }
    QString home() const { return m_home.path(); }
    /// Gives the programs that are started from now on an environment variable.
    void variable(const char* name, const QString& value)
    {
        m_environment.insert(QLatin1String(name), value);
    }
    /// Gives the process the surroundings of the program.
    void prepare(QProcess& process) const
    {
        process.setProcessEnvironment(m_environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.setWorkingDirectory(QDir::rootPath());
    }
    void start(QProcess& process, const QStringList& arguments) const
    {
        prepare(process);
        process.start(file(QStringLiteral("tessera")), arguments);
    }
    /// Starts another copy and waits for its end: its exit code, or below 0.
    int startAndWait(const QStringList& arguments) const
    {
        QProcess process;
        start(process, arguments);
        if (!process.waitForFinished(patience))
            return -1;
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    }

private:
    QTemporaryDir m_folder;
    QTemporaryDir m_home;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
};

/// Whether the programs that are started have to do without the engine's sandbox.
inline bool isWithoutSandbox()
{
    return ::geteuid() == 0 || qEnvironmentVariableIsSet("QTWEBENGINE_DISABLE_SANDBOX");
}

/// Whether a line on the program's output is no complaint of its own.
inline bool isOfEngine(const QString& line)
{
    // Of the engine: its log, and what it says of its sandbox and of certificates. Of Xlib: a
    // reply to the engine's graphics thread can overtake the event that the toolkit is showing
    // it on the main thread; it says so and sets its count right. Of the library of fonts: in the
    // sandbox it finds no files.
    static const QRegularExpression excused(QStringLiteral(
        "^(\\[\\d+:|Sandboxing disabled|----- Certificate|"
        "ERROR: No matching issuer|Xlib: sequence lost|Fontconfig error: Cannot load default|$)"));
    return excused.match(line).hasMatch();
}

/// What the system says of a process.
inline QByteArray ofProcess(qint64 process, const char* what)
{
    return bytesOf(QStringLiteral("/proc/%1/%2").arg(process).arg(QLatin1String(what)));
}

/// The processes that draw pages of the program, which shows one: the last in the engine's line
/// of processes, in the sandbox as without.
inline QList<qint64> pageProcesses(qint64 program)
{
    QMultiHash<qint64, qint64> children;
    const QStringList all = QDir(QStringLiteral("/proc")).entryList({QStringLiteral("[0-9]*")});
    for (const QString& name : all)
        children.insert(ofProcess(name.toLongLong(), "stat").split(' ').value(3).toLongLong(),
                        name.toLongLong());
    QList<qint64> line = children.values(program);
    for (qsizetype i = 0; i < line.size(); ++i)
        line += children.values(line.at(i));
    line.removeIf([&](qint64 process) {
        return children.contains(process) ||
               ofProcess(process, "cmdline").contains("--no-zygote-sandbox");
    });
    return line;
}

/// Whether these can do no more than the engine's sandbox lets them.
inline bool pagesAreInTheSandbox(qint64 program)
{
    static const QRegularExpression locked(
        QStringLiteral("\nNSpid:\t\\d+\t\\d.*\nNoNewPrivs:\t1\nSeccomp:\t2\n"),
        QRegularExpression::DotMatchesEverythingOption);
    const QList<qint64> pages = pageProcesses(program);
    return !pages.isEmpty() && std::all_of(pages.begin(), pages.end(), [](qint64 page) {
        return locked.match(QString::fromLatin1(ofProcess(page, "status"))).hasMatch();
    });
}

/// What a user does with the real program, by keys, clicks and drags, and what the
/// display shows then. Fails on every warning that the program writes, but the
/// engine's own.
class Scenario : public QObject {
    Q_OBJECT
protected slots:
    void init()
    {
        m_server = std::make_unique<LoopbackServer>();
        m_server->page(QStringLiteral("/red"), coloured("Rot", "#ff0000"));
        m_server->page(QStringLiteral("/blue"), coloured("Blau", "#0000ff"));
        m_program = std::make_unique<Installation>();
        m_run = std::make_unique<QProcess>();
        m_output.clear();
    }
    void cleanup()
    {
        User::keepPictureOfFailure();
        if (m_run->state() != QProcess::NotRunning) {
            m_run->kill();
            m_run->waitForFinished();
        }
        const QStringList lines = QString::fromUtf8(output()).split(u'\n');
        for (const QString& line : lines)
            QVERIFY2(isOfEngine(line), qPrintable(line));
    }

protected:
    /// The caption of the frame while no browser window fills it.
    static QString title() { return QStringLiteral("Tessera 5.3.5"); }
    /// The caption of the frame while the window with this page fills it.
    static QString maximised(const QString& page)
    {
        return title() + QStringLiteral(" - [%1]").arg(page);
    }
    static QByteArray coloured(const QByteArray& name, const QByteArray& colour)
    {
        return "<title>" + name + "</title><body style='background:" + colour + "'>";
    }

    /// Starts the program with a page and waits until it is there.
    void open(const QString& path, const QString& pageTitle)
    {
        m_program->start(*m_run, {m_server->address(path)});
        QTRY_SEES(maximised(pageTitle));
        if (!isWithoutSandbox())
            QVERIFY(QTest::qWaitFor([&] { return pagesAreInTheSandbox(m_run->processId()); }));
        QTest::qWait(700); // the engine drops clicks on a page that has just come up
    }
    /// Waits for the program's end, which may have come already.
    bool hasEnded()
    {
        return m_run->state() == QProcess::NotRunning || m_run->waitForFinished(patience);
    }
    /// What the program has written since it was started.
    const QByteArray& output() { return m_output += m_run->readAll(); }

    std::unique_ptr<LoopbackServer> m_server;
    std::unique_ptr<Installation> m_program;
    std::unique_ptr<QProcess> m_run;

private:
    QByteArray m_output;
};
