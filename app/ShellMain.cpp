#include "address/AddressResolver.h"
#include "address/DriveList.h"
#include "address/FileTable.h"
#include "address/MovedProgram.h"
#include "app/AppInit.h"
#include "app/ContextMenuKey.h"
#include "app/DarkTitles.h"
#include "app/EndSignals.h"
#include "app/GermanTexts.h"
#include "app/InstanceServer.h"
#include "app/MDIForm1.h"
#include "app/ProgramStarter.h"
#include "app/StartupNotice.h"
#include "base/MessagePrompt.h"
#include "base/ShownText.h"
#include "engine/WebEngineHost.h"
#include "launcher/ShellStart.h"
#include "pages/asking/PageDialogs.h"

#include <QApplication>
#include <QDebug>
#include <QDialog>
#include <QIcon>
#include <QSessionManager>
#include <QStandardPaths>
#include <QTimer>

#include <array>

using namespace Qt::StringLiterals;

namespace {

/// The drives as they are when a letter is asked for.
class PresentDrives : public DriveTable {
public:
    QString rootOf(QChar letter) const override { return mountedDrives().rootOf(letter); }
};

/// While the program is ended from outside, nobody may be there to dismiss a
/// message: it goes to the standard error instead.
class EndingPrompt : public MessagePrompt {
public:
    void tell(QWidget* parent, const QString& text, const QString& title, Icon icon) override
    {
        if (m_unattended)
            qWarning().noquote() << "Tessera:" << messageText(text);
        else
            MessagePrompt::tell(parent, text, title, icon);
    }
    void setUnattended(bool unattended) { m_unattended = unattended; }

private:
    bool m_unattended = false;
};

void describeProgram()
{
    QApplication::setApplicationName(u"Tessera"_s);
    QApplication::setApplicationVersion(QStringLiteral(TESSERA_VERSION));
    QApplication::setDesktopFileName(u"tessera"_s);
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

QString storage(QStandardPaths::StandardLocation location)
{
    return QStandardPaths::writableLocation(location) + u"/engine"_s;
}

int run(QApplication& application, const ShellStart& start)
{
    const LinuxFileTable files;
    const PresentDrives drives;
    const QString folder = QCoreApplication::applicationDirPath();
    WebEngineHost engines(storage(QStandardPaths::AppLocalDataLocation),
                          storage(QStandardPaths::CacheLocation), [&](const QString& typed) {
                              return resolveAddress(licenceFound(typed, folder, files), files,
                                                    drives);
                          });
    EndingPrompt prompt;
    PageDialogs asker;
    ProcessStarter starter;
    AppInit module(folder, prompt, starter,
                   {engines.factory(), [] { return mountedDrives().entries(); }});
    MDIForm1& frame = module.frame();
    new DarkTitles::Watch(&frame);
    engines.serve(frame, &frame, asker);
    frame.addEndCheck([&engines] { return engines.mayEnd(); });
    QObject::connect(&frame, &MDIForm1::unloaded, &application, &QCoreApplication::quit,
                     Qt::QueuedConnection);

    InstanceServer server([&frame] { return frame.windowTitle(); },
                          [&module](const HandOver& message) { return module.takeOver(message); });
    if (!server.listen(start.folder.socketPath()))
        qWarning("Tessera: further starts cannot hand over their address");
    EndSignals signals_;
    const auto end = [&frame, &prompt] { endProgram(frame, prompt); };
    QObject::connect(&signals_, &EndSignals::endRequested, &frame, end);
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &frame, end);

    module.Main(QString::fromStdString(start.address));
    const int status = QApplication::exec();
    engines.endService();
    return status;
}

int show(const QString& complaint)
{
    QApplication::setWindowIcon(QIcon(u":/icons/frame.svg"_s));
    MessagePrompt().tell(nullptr, complaint, QApplication::applicationName(),
                         Prompt::Icon::Exclamation);
    return EXIT_FAILURE;
}

} // namespace

int tesseraMain(const ShellStart& start)
{
    startupNotice::prepare();
    int count = 1;
    std::array<char*, 2> arguments{start.programName, nullptr};
    QApplication application(count, arguments.data());
    describeProgram();
    installGermanTexts();
    new ContextMenuKey(&application); // belongs to the application
    return start.complaint.empty() ? run(application, start)
                                   : show(QString::fromStdString(start.complaint));
}
