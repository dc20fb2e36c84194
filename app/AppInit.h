#pragma once

#include "app/AddressToClipboard.h"
#include "base/Prefer.h"
#include "browser/frmBrowser.h"

#include <QElapsedTimer>

#include <memory>

class FrameCommands;
class MDIForm1;
class ProgramStarter;
class Prompt;
struct SecondStart;

/// The start-up module: holds the preferences of the run, creates the frame and brings it
/// up, and takes over what second starts bring.
class AppInit {
public:
    /// `programFolder` holds preferences and archive, `dataFolder` is the program's in the user's
    /// data; without one nothing is kept there. `prompt`, `starter` and what `parts` refers to
    /// outlive the module.
    AppInit(const QString& programFolder, Prompt& prompt, ProgramStarter& starter,
            BrowserParts parts, const QString& dataFolder = {});
    ~AppInit();
    Q_DISABLE_COPY_MOVE(AppInit)

    /// Brings the frame up, which is shown from the event loop. `commandLine` is an address,
    /// neither split nor unquoted, or the word of a desktop action.
    void Main(const QString& commandLine);
    MDIForm1& frame() const { return *m_frame; }

    /// Takes what a second start brings. The address also goes to the clipboard; a start
    /// without an address, or with the word of a desktop action, brings the frame to the front.
    /// False, with nothing done, when the frame is closing: the second start takes its place.
    bool takeOver(const SecondStart& start);
    /// The frame's hook: handles the message `InstanceMessage::Number::HandOver` and
    /// returns true; any other message is not its business. While drops are off the
    /// address is lost.
    bool WindowProc(int uMsg, const QString& address);

private:
    void placeFrame();
    /// Runs a desktop action from the event loop, unless a dialog is open by then.
    void runLater(const QString& role);
    void tellOfDefaults(const QString& fault);
    /// Brings the question to the front that keeps a closing frame open.
    void showQuestion(const QByteArray& activationToken, const QByteArray& startupId);
    /// Opens a browser window on the address, or on the start address when it is empty.
    void openBrowser(const QString& address);

    QElapsedTimer m_questionShown;
    AddressToClipboard m_clipboard;
    Prefer m_prefer;
    std::unique_ptr<MDIForm1> m_frame;
    FrameCommands* m_commands;
};
