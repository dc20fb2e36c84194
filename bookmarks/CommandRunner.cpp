#include "bookmarks/CommandRunner.h"

#include "base/RunCommand.h"

using namespace Qt::StringLiterals;

void CommandRunner::run(const Command& command)
{
    if (m_closing || !command || (m_prepare && !m_prepare()))
        return;
    ++m_running;
    runCommand(m_shell, &m_window, [this, &command] {
        try {
            command();
        } catch (const Error& error) {
            tell(error.text());
        }
    });
    --m_running;
    if (m_report)
        m_report();
    if (m_running == 0 && m_closeLater)
        m_window.close();
}

void CommandRunner::tell(const QString& text)
{
    if (text.isEmpty())
        return;
    const DropsDisabled guard(m_shell);
    m_shell.prompt().tell(&m_window, text, u"Meldung"_s, Prompt::Icon::Exclamation);
}

bool CommandRunner::startClosing()
{
    if (m_running > 0 || m_closing) {
        m_closeLater = !m_closing;
        return false;
    }
    m_closing = true;
    return true;
}
