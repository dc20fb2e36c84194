#include "launcher/ShellStart.h"

#include <array>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <unistd.h>

namespace {

std::string besideThisProgram(const std::string& name)
{
    std::array<char, PATH_MAX> path = {};
    if (::readlink("/proc/self/exe", path.data(), path.size() - 1) < 0)
        return name;
    const std::string text(path.data());
    return text.substr(0, text.rfind('/') + 1) + name;
}

// Local, so that the shell's libraries are not looked through for each symbol of those that are
// loaded later: the driver of the graphics has some 20,000 of them.
ShellEntry* loadShell()
{
    void* const shell = ::dlopen(besideThisProgram(TESSERA_SHELL).c_str(), RTLD_NOW | RTLD_LOCAL);
    return shell == nullptr ? nullptr
                            : reinterpret_cast<ShellEntry*>(::dlsym(shell, "tesseraShell"));
}

} // namespace

int runShell(const ShellStart& start, char* programName)
{
    if (ShellEntry* const entry = loadShell())
        return entry(start, programName);
    const std::string complaint =
        std::string("Tessera: Das Programm lässt sich nicht laden: ") + ::dlerror() + "\n";
    std::fputs(complaint.c_str(), stderr);
    return EXIT_FAILURE;
}
