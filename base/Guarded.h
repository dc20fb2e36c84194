#pragma once

#include "base/Errors.h"
#include "base/Prompt.h"

#include <exception>
#include <utility>

/// Runs `command` at the edge of the program, where no exception may leave a
/// slot or an event handler: an error is shown to the user as a message, and
/// the program stays as it is. Returns whether the command went through.
template <typename Command>
bool runCommand(Prompt& prompt, QWidget* parent, Command&& command)
{
    try {
        std::forward<Command>(command)();
        return true;
    } catch (const Error& error) {
        prompt.tell(parent, error.text(), QStringLiteral("Meldung"), Prompt::Icon::Exclamation);
    } catch (const std::exception& error) {
        prompt.tell(parent, QString::fromUtf8(error.what()), QStringLiteral("Meldung"),
                    Prompt::Icon::Exclamation);
    }
    return false;
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
