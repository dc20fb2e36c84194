#include "app/AppInit.h"

#include "app/ChildArea.h"
#include "app/DesktopAction.h"
#include "app/FrameCommands.h"
#include "app/FrameMenus.h"
#include "app/InstanceServer.h"
#include "app/MDIForm1.h"
#include "app/StartupNotice.h"
#include "base/GlyphIcon.h"
#include "base/Prompt.h"
#include "base/RunCommand.h"
#include "base/Twips.h"
#include "launcher/InstanceMessage.h"

#include <QAction>
#include <QApplication>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {
constexpr qint16 maximised = 2;
constexpr int handOverMessage = static_cast<int>(InstanceMessage::Number::HandOver);
} // namespace

AppInit::AppInit(const QString& programFolder, Prompt& prompt, ProgramStarter& starter,
                 BrowserParts parts, const QString& dataFolder)
    : m_prefer(programFolder),
      m_frame(std::make_unique<MDIForm1>(
          FrameParts{programFolder, QStringLiteral("Tessera " TESSERA_VERSION),
                     colouredIcon(u"frame"_s), colouredIcon(u"child"_s), colouredIcon(u"private"_s),
                     m_prefer, prompt, std::move(parts), dataFolder})),
      m_commands(new FrameCommands(*m_frame, starter)) // belongs to the frame
{
}

AppInit::~AppInit() = default;

void AppInit::Main(const QString& commandLine)
{
    const QString role = roleOfDesktopAction(commandLine);
    const QString startAddress = role.isEmpty() ? commandLine : QString();
    QString fault;
    runReporting([this] { m_prefer.LoadPref(); }, [&](const QString& text) { fault = text; });
    m_frame->setWindowIcon(m_frame->frameIcon());
    m_frame->counter(0);
    m_frame->StatusBarCurr(m_prefer.StatusBar() >= 1);
    placeFrame();

    m_frame->setWindowTitle(m_frame->title());
    m_frame->menus().item(u"mn_Tessera"_s)->setText(u"&Info über "_s + m_frame->title());
    if (startAddress.isEmpty() && !m_frame->isMaximized())
        placeFrame();
    if (m_prefer.MdiState() == maximised)
        m_frame->setWindowState(m_frame->windowState() | Qt::WindowMaximized);
    // An address always opens a window, even where none is wanted at the start.
    if (m_prefer.StartBrowser() != 0 || !startAddress.isEmpty()) {
        openBrowser(startAddress);
        if (frmBrowser* active = m_frame->activeBrowser())
            active->showMaximized();
    }
    // The navigation was asked for before, so it comes first: the process that draws the page
    // starts while the frame's window is made.
    QTimer::singleShot(0, m_frame.get(), [this] {
        if (!m_frame->isUnloading())
            m_frame->show();
    });
    // Of a new window that was asked for, the first one takes the place.
    if (!role.isEmpty() && (role != "mn_Browser"_L1 || m_frame->Browser().IsEmpty()))
        runLater(role);
    if (!fault.isEmpty())
        QTimer::singleShot(0, m_frame.get(), [this, fault] { tellOfDefaults(fault); });
}

void AppInit::tellOfDefaults(const QString& fault)
{
    const DropsDisabled guard(*m_frame);
    const QString text = fault + u"\n\nBis zum Beenden gelten die Voreinstellungen."_s;
    m_frame->prompt().tell(m_frame.get(), text, u"Meldung"_s, Prompt::Icon::Exclamation);
}

void AppInit::placeFrame()
{
    m_frame->openAt({toPixels(m_prefer.MdiWidth()), toPixels(m_prefer.MdiHeight())});
}

void AppInit::openBrowser(const QString& address)
{
    m_frame->HistoryUrl(address);
    m_frame->NewBrowser();
    m_frame->HistoryUrl({});
}

bool AppInit::takeOver(const SecondStart& start)
{
    constexpr qsizetype longestId = 1024; // of the length that X11 takes in one request
    const QByteArray startupId = start.startupId.toUtf8().left(longestId);
    if (m_frame->isUnloading()) {
        showQuestion(start.activationToken.toUtf8(), startupId);
        return false;
    }
    const QString role = roleOfDesktopAction(start.address);
    const bool toFront = start.toFront || !role.isEmpty();
    if (toFront || m_frame->isMinimized())
        startupNotice::letToFront(*m_frame, start.activationToken.toUtf8(), startupId);
    if (toFront) {
        // Under Wayland the token is good for one window: that which the action opens, if any.
        const bool opensWindow = role == "mn_Bookmarks"_L1 || role == "mn_Historie"_L1;
        if (!opensWindow || !startupNotice::isWayland())
            m_frame->bringToFront();
        if (!role.isEmpty())
            runLater(role);
    } else {
        m_clipboard.put(start.address);
        WindowProc(handOverMessage, start.address);
    }
    startupNotice::end(startupId);
    return true;
}

void AppInit::runLater(const QString& role)
{
    QTimer::singleShot(0, m_frame.get(), [this, role] {
        if (!m_frame->isUnloading() && QApplication::activeModalWidget() == nullptr)
            m_commands->run(role);
        if (startupNotice::isTokenLeft())
            m_frame->bringToFront();
    });
}

void AppInit::showQuestion(const QByteArray& activationToken, const QByteArray& startupId)
{
    // A second start that is refused tries again for 30 s. Only the first of its tries may
    // interrupt what the user is doing meanwhile.
    constexpr qint64 pause = 30000;
    QWidget* const question = QApplication::activeModalWidget();
    if (question == nullptr || (m_questionShown.isValid() && !m_questionShown.hasExpired(pause)))
        return;
    m_questionShown.start();
    startupNotice::letToFront(*question, activationToken, startupId);
    question->raise();
    question->activateWindow();
}

bool AppInit::WindowProc(int uMsg, const QString& address)
{
    if (uMsg != handOverMessage)
        return false;
    if (m_frame->area().acceptsAddresses())
        openBrowser(address);
    m_frame->restoreIfMinimized();
    return true;
}
