#pragma once

#include "app/StartModule.h"
#include "base/Prefer.h"
#include "browser/frmBrowser.h"

#include <QElapsedTimer>

#include <memory>

class MDIForm1;
class ProgramStarter;
class Prompt;
struct SecondStart;

/// The start-up module: holds the program-wide values of the run, creates the
/// frame and brings it up, and switches its drop target.
class AppInit : public StartModule {
public:
    /// `programFolder` is the folder of the executable. `prompt`, `starter` and
    /// what `parts` refers to outlive the module.
    AppInit(const QString& programFolder, Prompt& prompt, ProgramStarter& starter,
            BrowserParts parts);
    ~AppInit() override;

    /// Brings the frame up; `startAddress` is the command line, neither split
    /// nor unquoted.
    void Main(const QString& startAddress);
    MDIForm1& frame() const { return *m_frame; }

    const QString& programFolder() const override { return m_programFolder; }
    const QString& title() const override { return m_title; }
    QIcon frameIcon() const override { return m_frameIcon; }
    QIcon childIcon() const override { return m_childIcon; }
    Prefer& preferences() override { return *m_prefer; }
    void SetDropDisabled(bool disable) override;
    /// Takes what a second start brings. The address also goes to the clipboard; a start
    /// without an address brings the frame to the front. False, with nothing done, when
    /// the frame is closing: the second start takes its place.
    bool takeOver(const SecondStart& start);
    /// The frame's hook: handles the message `InstanceMessage::Number::HandOver` and
    /// returns true; any other message is not its business. While drops are off the
    /// address is lost.
    bool WindowProc(int uMsg, const QString& address);
    void installHook() override { m_hooked = true; }
    void removeHook() override { m_hooked = false; }

private:
    void placeFrame();
    void tellOfDefaults(const QString& fault);
    /// Brings the question to the front that keeps a closing frame open.
    void showQuestion(const QByteArray& activationToken, const QByteArray& startupId);
    /// Opens a browser window on the address, or on the start address when it is empty.
    void openBrowser(const QString& address);

    QString m_programFolder;
    QString m_title;
    QIcon m_frameIcon;
    QIcon m_childIcon;
    QElapsedTimer m_questionShown;
    bool m_hooked = false;
    bool m_dropEnabled = false;
    std::unique_ptr<Prefer> m_prefer;
    std::unique_ptr<MDIForm1> m_frame;
};
