#include "address/AddressResolver.h"
#include "address/FilesAndDrives.h"
#include "app/AppInit.h"
#include "app/ContextMenuKey.h"
#include "app/DarkTitles.h"
#include "app/DialogPortal.h"
#include "app/GermanTexts.h"
#include "app/InstanceServer.h"
#include "app/LogoutDelay.h"
#include "app/MDIForm1.h"
#include "app/MemoryReturn.h"
#include "app/ProgramFolder.h"
#include "app/ProgramStarter.h"
#include "app/QuestionKeys.h"
#include "app/StartupNotice.h"
#include "app/WindowKeeper.h"
#include "base/DialogPrompt.h"
#include "base/Errors.h"
#include "base/GlyphIcon.h"
#include "base/Prefer.h"
#include "base/ShownText.h"
#include "browser/PageTexts.h"
#include "engine/EngineVersion.h"
#include "engine/WebEngineHost.h"
#include "launcher/ShellStart.h"

#include <QApplication>
#include <QDebug>
#include <QDialog>
#include <QIcon>
#include <QLoggingCategory>
#include <QSessionManager>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QTimer>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <sys/socket.h>
#include <type_traits>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// While the program is ended from outside, nobody may be there to dismiss a
/// message: it goes to the standard error instead. Where nobody may be asked either, changes
/// are saved and everything else is agreed to.
class EndingPrompt : public DialogPrompt {
public:
    void tell(QWidget* parent, const QString& text, const QString& title, Icon icon) override
    {
        if (m_unattended)
            qWarning().noquote() << "Tessera:" << messageText(text);
        else
            DialogPrompt::tell(parent, text, title, icon);
    }
    bool askYesNo(QWidget* parent, const QString& text, const QString& title, Icon icon) override
    {
        return m_isMute || DialogPrompt::askYesNo(parent, text, title, icon);
    }
    Answer ask(QWidget* parent, const Question& question) override
    {
        return m_isMute ? Answer{.isAccepted = true} : DialogPrompt::ask(parent, question);
    }
    void setUnattended(bool unattended) { m_unattended = unattended; }
    /// From now on nobody is asked.
    void mute() { m_isMute = true; }

private:
    bool m_isMute = false;
    bool m_unattended = false;
};

// A signal handler has no other way to the object of EndSignals.
std::atomic<int> handlerSocket = -1;
static_assert(std::atomic<int>::is_always_lock_free);

/// Calls `end` from the event loop at SIGTERM, SIGINT and SIGHUP for as long as it lives;
/// then the former dispositions return. One object at a time. A SIGHUP that was ignored
/// at the start (nohup) stays ignored.
class EndSignals {
public:
    explicit EndSignals(std::function<void()> end) : m_end(std::move(end))
    {
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0,
                         m_sockets.data()) != 0)
            return;
        m_notifier = std::make_unique<QSocketNotifier>(m_sockets[1], QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                         [this] { drain(); });
        handlerSocket = m_sockets[0];
        struct sigaction action = {};
        action.sa_handler = wake;
        action.sa_flags = SA_RESTART;
        ::sigemptyset(&action.sa_mask);
        for (std::size_t i = 0; i < signalNumbers.size(); ++i) {
            ::sigaction(signalNumbers[i], nullptr, &m_former[i]);
            if (signalNumbers[i] != SIGHUP || m_former[i].sa_handler != SIG_IGN)
                ::sigaction(signalNumbers[i], &action, nullptr);
        }
    }
    ~EndSignals()
    {
        if (!m_notifier)
            return;
        for (std::size_t i = 0; i < signalNumbers.size(); ++i)
            ::sigaction(signalNumbers[i], &m_former[i], nullptr);
        handlerSocket = -1;
        m_notifier.reset();
        ::close(m_sockets[0]);
        ::close(m_sockets[1]);
    }
    Q_DISABLE_COPY_MOVE(EndSignals)

private:
    static constexpr std::array signalNumbers = {SIGTERM, SIGINT, SIGHUP};

    static void wake(int)
    {
        const int reason = errno;
        const char byte = 0;
        // Where the buffer is full, the event loop is about to be woken anyway.
        [[maybe_unused]] const ssize_t sent =
            ::send(handlerSocket.load(), &byte, 1, MSG_NOSIGNAL | MSG_DONTWAIT);
        errno = reason;
    }

    void drain()
    {
        std::array<char, 64> bytes = {};
        while (::recv(m_sockets[1], bytes.data(), bytes.size(), 0) > 0) {
        }
        m_end();
    }

    std::function<void()> m_end;
    std::array<int, 2> m_sockets = {-1, -1};
    std::array<struct sigaction, signalNumbers.size()> m_former = {};
    std::unique_ptr<QSocketNotifier> m_notifier;
};

void describeProgram()
{
    QApplication::setApplicationName(u"Tessera"_s);
    QApplication::setApplicationVersion(QStringLiteral(TESSERA_VERSION));
    QApplication::setDesktopFileName(u"tessera"_s);
    // The engine (6.4) describes its graphics in the terminal at every start.
    QLoggingCategory::setFilterRules(u"qt.webenginecontext=false"_s);
    // The program ends when its frame unloads, whatever else is still open.
    QApplication::setQuitOnLastWindowClosed(false);
}

/// Closes the menu or dialog on top, if one is open: the command that opened it is
/// still at work.
bool dismissTop()
{
    if (QWidget* menu = QApplication::activePopupWidget())
        return menu->close();
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog != nullptr)
        dialog->done(QDialog::Rejected);
    return dialog != nullptr;
}

/// Ends the program as the menu does; what is open over it is dismissed first.
void endProgram(MDIForm1& frame, EndingPrompt& prompt)
{
    if (dismissTop()) {
        QTimer::singleShot(0, &frame, [&] { endProgram(frame, prompt); });
        return;
    }
    prompt.setUnattended(true);
    frame.close();
    prompt.setUnattended(false);
}

/// Ends the program while the session manager waits. Where something would be lost the user is
/// asked, if the session manager lets him be; when he stays, so does the session.
void endWithSession(MDIForm1& frame, EndingPrompt& prompt, QSessionManager& session)
{
    if (frame.losses().isEmpty()) {
        endProgram(frame, prompt);
        return;
    }
    if (!session.allowsInteraction()) {
        prompt.mute();
        endProgram(frame, prompt);
        return;
    }
    // What is open over the frame cannot be dismissed before this returns.
    if (QWidget* const open = QApplication::activeModalWidget())
        open->activateWindow();
    else
        endProgram(frame, prompt);
    if (frame.isVisible())
        session.cancel();
    session.release();
}

/// The session manager may start the program again when the user logs in. What it would start
/// by itself is the shell, which nobody but the launcher can start.
void nameLauncher(QSessionManager& session)
{
    session.setRestartCommand({QCoreApplication::applicationDirPath() + u"/tessera"_s});
}

/// The address that the first window will open; empty without a window or an address.
QString firstAddress(const QString& programFolder, const QString& startAddress)
{
    if (!startAddress.isEmpty())
        return StripQuotes(startAddress);
    Prefer preferences(programFolder);
    ignoringErrors([&preferences] { preferences.LoadPref(); });
    return preferences.StartBrowser() != 0 ? StripQuotes(preferences.HomeUrl()) : QString();
}

int run(QApplication& application, const ShellStart& start)
{
    const QString beside = QCoreApplication::applicationDirPath();
    const QString folder = programFolder(
        beside, QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    const QString data = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    // The licence text lies beside the program, wherever preferences and archive do.
    WebEngineHost engines(data + u"/engine"_s,
                          QStandardPaths::writableLocation(QStandardPaths::CacheLocation) +
                              u"/engine"_s,
                          machineResolver(beside));
    const QString address = QString::fromStdString(start.address);
    if (const QString first = firstAddress(folder, address); !first.isEmpty())
        engines.begin(first);
    EndingPrompt prompt;
    ProcessStarter starter;
    RememberedDrives drives;
    AppInit module(
        folder, prompt, starter,
        {engines.factory(), [&drives] { return drives.entries(); }, engines.privateFactory()},
        data);
    MDIForm1& frame = module.frame();
    new DarkTitles::Watch(&frame);
    engines.serve(frame, &frame);
    frame.addEndCheck([&engines] { return engines.mayEnd(); });
    QObject::connect(&frame, &MDIForm1::unloaded, &frame,
                     [&engines] { engines.cancelDownloads(); });
    QObject::connect(&frame, &MDIForm1::unloaded, &application, &QCoreApplication::quit,
                     Qt::QueuedConnection);

    InstanceServer server([&frame] { return frame.windowTitle(); },
                          [&module](const SecondStart& second) { return module.takeOver(second); });
    if (!server.listen(start.socketPath))
        qWarning("Tessera: further starts cannot hand over their address");
    const auto end = [&frame, &prompt] { endProgram(frame, prompt); };
    const EndSignals endSignals(end);
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &frame,
                     [&](QSessionManager& session) { endWithSession(frame, prompt, session); });
    QObject::connect(&application, &QGuiApplication::saveStateRequest, &frame, nameLauncher);
    const DialogPortal dialogs;
    LogoutDelay logout;
    QObject::connect(&frame, &MDIForm1::lossesChanged, &logout,
                     [&] { logout.setReason(frame.losses()); });

    new MemoryReturn(frame);                            // belongs to the frame
    new WindowKeeper(frame, data + u"/fenster.json"_s); // belongs to the frame
    module.Main(address);
    const int status = QApplication::exec();
    engines.endService();
    return status;
}

int show(const QString& complaint)
{
    QApplication::setWindowIcon(colouredIcon(u"frame"_s));
    DialogPrompt().tell(nullptr, complaint, QApplication::applicationName(),
                        Prompt::Icon::Exclamation);
    return EXIT_FAILURE;
}

} // namespace

extern "C" Q_DECL_EXPORT int tesseraShell(const ShellStart& start, char* programName)
{
    if (start.isAskedForVersion)
        return std::fputs(engineVersionText().c_str(), stdout) < 0 ? EXIT_FAILURE : EXIT_SUCCESS;
    startupNotice::prepare();
    int count = 1; // the other words are an address, in which Qt must find no options
    std::array<char*, 2> arguments{programName, nullptr};
    QApplication application(count, arguments.data());
    describeProgram();
    installGermanTexts();
    new ContextMenuKey(&application); // belongs to the application
    new QuestionKeys(application);    // as this does
    return start.complaint.empty() ? run(application, start)
                                   : show(QString::fromStdString(start.complaint));
}
static_assert(std::is_same_v<decltype(tesseraShell), ShellEntry>);
