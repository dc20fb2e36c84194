#pragma once

#include <QString>

#include <functional>

class QWidget;
class Shell;

/// Runs the commands of a window: errors become messages, and closing waits until the
/// command is done.
class CommandRunner {
public:
    using Command = std::function<void()>;
    /// Makes the window ready for a command; false leaves the command out.
    using Prepare = std::function<bool()>;

    /// Both outlive this.
    CommandRunner(Shell& shell, QWidget& window) : m_shell(shell), m_window(window) {}

    void prepareBy(const Prepare& prepare) { m_prepare = prepare; }
    /// `report` is called when a command is done, whatever came of it.
    void reportTo(const Command& report) { m_report = report; }
    /// Does nothing once the window closes, and for an empty command.
    void run(const Command& command);
    /// Shows the text as a message, if there is one.
    void tell(const QString& text);
    /// To be asked once by each close event. False while a command runs, which then closes
    /// the window at its end, and when the window is closing already.
    bool startClosing();
    /// The window stays after all.
    void stopClosing() { m_closing = false; }

private:
    Shell& m_shell;
    QWidget& m_window;
    Prepare m_prepare;
    Command m_report;
    /// How many commands are running: one may open another's menu or prompt.
    int m_running = 0;
    /// The user has closed the window while a command was running.
    bool m_closeLater = false;
    bool m_closing = false;
};
