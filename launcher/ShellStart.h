#pragma once

#include <string>

/// What the launcher tells the shell, a module that it loads into its own process. Texts are
/// UTF-8.
struct ShellStart {
    /// The address of the command line, or empty.
    std::string address = {};
    /// Where this copy listens for further starts.
    std::string socketPath = {};
    /// Why the program cannot run; it is shown then, and nothing else is done.
    std::string complaint = {};
    /// The shell says which engine it has, and does nothing else.
    bool isAskedForVersion = false;
};

/// Loads the shell, which lies beside this program, and runs it until the program ends. Returns
/// the program's exit status. Where it cannot be loaded, that is said on the standard error, in
/// German.
int runShell(const ShellStart& start, char* programName);

/// What the shell is called by: its one function that can be seen from outside, `tesseraShell`.
/// `programName` is the first word of the command line.
using ShellEntry = int(const ShellStart& start, char* programName);
