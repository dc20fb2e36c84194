#pragma once

#include <optional>
#include <string>

/// What the launcher tells the shell, a program of its own that the launcher's process
/// becomes. Texts are UTF-8.
struct ShellStart {
    /// The address of the command line, or empty.
    std::string address = {};
    /// Where this copy listens for further starts.
    std::string socketPath = {};
    /// Why the program cannot run; it is shown then, and nothing else is done.
    std::string complaint = {};
    /// The locked descriptor of the user's one running copy, or -1.
    int lock = -1;
    /// The shell says which engine it has, and does nothing else.
    bool isAskedForVersion = false;
};

/// Makes this process the shell, which lies beside this program. `arguments` are those
/// of the command line; the shell has its address from `start`. Returns only where that
/// fails, and says why in German.
std::string becomeShell(const ShellStart& start, char** arguments);

/// In the shell, while it has one thread: what the launcher told it, or nothing when it
/// was not started by the launcher. The lock is held until the process has ended, so
/// that nobody takes the place of a copy that is still tidying up.
std::optional<ShellStart> startByLauncher();
