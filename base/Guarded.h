#pragma once

#include "base/Errors.h"
#include "base/Prompt.h"

#include <exception>
#include <utility>

/// Runs `command` at the edge of the program, where no exception may leave a
/// slot or an event handler: `report` gets the text of an error, and the program
/// stays as it is. Returns whether the command went through.
template <typename Command, typename Report>
bool runReporting(Command&& command, Report&& report)
{
    try {
        std::forward<Command>(command)();
        return true;
    } catch (const Error& error) {
        report(error.text());
    } catch (const std::exception& error) {
        report(QString::fromUtf8(error.what()));
    }
    return false;
}

/// As above, in a dialog: the user is shown the text as a message.
template <typename Command>
bool runCommand(Prompt& prompt, QWidget* parent, Command&& command)
{
    return runReporting(std::forward<Command>(command), [&](const QString& text) {
        prompt.tell(parent, text, QStringLiteral("Meldung"), Prompt::Icon::Exclamation);
    });
}

/// Runs one statement of a handler that ignores errors statement by statement,
/// so that a failure skips just this statement.
template <typename Statement>
void ignoringErrors(Statement&& statement) noexcept
{
    try {
        std::forward<Statement>(statement)();
    } catch (...) { // the handler goes on with its next statement
    }
}
