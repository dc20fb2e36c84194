#pragma once

#include "launcher/InstancePlace.h"

#include <string>

/// What the launcher found out before it loaded the shell.
struct ShellStart {
    /// The program's name as it was called; lives as long as the process.
    char* programName = nullptr;
    /// The address of the command line, or empty. UTF-8.
    std::string address;
    /// Where this copy listens. The launcher holds the lock until the process ends.
    InstanceFolder folder;
    /// Why the program cannot run; it is shown then, and nothing else is done. UTF-8.
    std::string complaint;
};

/// The shell's entry in its module: runs the program and returns its exit status.
/// The launcher loads the module only in the user's one running copy, so that a
/// second start is over before the engine would be in memory.
extern "C" [[gnu::visibility("default")]] int tesseraMain(const ShellStart& start);
