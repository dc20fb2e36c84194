#pragma once

#include "base/Errors.h"
#include "base/Prompt.h"
#include "base/Shell.h"

#include <QWidget>

/// While it lives, the frame takes no drops. Every question and message has one around it.
class DropsDisabled {
public:
    explicit DropsDisabled(Shell& shell) : m_shell(shell) { m_shell.SetDropDisabled(true); }
    DropsDisabled(const DropsDisabled&) = delete;
    DropsDisabled& operator=(const DropsDisabled&) = delete;
    ~DropsDisabled() { m_shell.SetDropDisabled(false); }

private:
    Shell& m_shell;
};

/// Runs a command of a dialog, where no exception may leave the slot: the user is shown the
/// text of an error as a message. Returns whether the command went through.
template <typename Command>
bool runCommand(Prompt& prompt, QWidget* parent, Command&& command)
{
    return runReporting(std::forward<Command>(command), [&](const QString& text) {
        prompt.tell(parent, text, QStringLiteral("Meldung"), Prompt::Icon::Exclamation);
    });
}

/// The same for a window outside of any dialog: the frame takes no drops while the
/// message is open.
template <typename Command>
bool runCommand(Shell& shell, QWidget* parent, Command&& command)
{
    return runReporting(std::forward<Command>(command), [&](const QString& text) {
        const DropsDisabled guard(shell);
        shell.prompt().tell(parent, text, QStringLiteral("Meldung"), Prompt::Icon::Exclamation);
    });
}

/// While it lives, the window shows the wait pointer.
class WaitPointer {
public:
    explicit WaitPointer(QWidget* window) : m_window(window) { window->setCursor(Qt::WaitCursor); }
    WaitPointer(const WaitPointer&) = delete;
    WaitPointer& operator=(const WaitPointer&) = delete;
    ~WaitPointer() { m_window->unsetCursor(); }

private:
    QWidget* m_window;
};
