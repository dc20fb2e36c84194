#include "launcher/ShellStart.h"

#include "base/SystemReason.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <sys/mman.h>
#include <unistd.h>

namespace {

// Holds the number of a descriptor: that of a file in memory with the values of a ShellStart,
// each ended by a zero byte. The kernel takes no argument above 128 KiB, so that an address
// made of several might not fit into one.
constexpr const char* variable = "TESSERA_START";

std::string pathOf(const std::string& descriptor)
{
    return "/proc/self/fd/" + descriptor;
}

std::string besideThisProgram(const std::string& name)
{
    std::array<char, PATH_MAX> path = {};
    if (::readlink("/proc/self/exe", path.data(), path.size() - 1) < 0)
        return name;
    const std::string text(path.data());
    return text.substr(0, text.rfind('/') + 1) + name;
}

bool leaveFor(const ShellStart& start)
{
    const int descriptor = ::memfd_create("tessera-start", 0);
    if (descriptor < 0)
        return false;
    const std::string number = std::to_string(descriptor);
    std::ofstream file(pathOf(number), std::ios::binary);
    file << start.address << '\0' << start.socketPath << '\0' << start.complaint << '\0'
         << start.lock << '\0' << start.isAskedForVersion << '\0' << std::flush;
    return file && ::setenv(variable, number.c_str(), 1) == 0;
}

} // namespace

std::string becomeShell(const ShellStart& start, char** arguments)
{
    const std::string shell = besideThisProgram(TESSERA_SHELL);
    if (leaveFor(start) && (start.lock < 0 || ::fcntl(start.lock, F_SETFD, 0) == 0)) {
        ::execv(shell.c_str(), arguments);
        // The words of the command line are passed on only so that lists of processes go on
        // showing them. They are left out when with the shell's path they are too long.
        if (errno == E2BIG)
            ::execv(shell.c_str(), std::array<char*, 2>{arguments[0], nullptr}.data());
    }
    return "'" + shell + "' lässt sich nicht starten: " + systemReason(errno);
}

std::optional<ShellStart> startByLauncher()
{
    const char* const value = std::getenv(variable);
    if (value == nullptr)
        return {};
    const std::string number = value;
    ::unsetenv(variable);
    std::ifstream file(pathOf(number), std::ios::binary);
    ShellStart start;
    std::string lock;
    std::string isAsked;
    for (std::string* text : {&start.address, &start.socketPath, &start.complaint, &lock, &isAsked})
        if (!std::getline(file, *text, '\0'))
            return {};
    ::close(std::stoi(number));
    start.lock = std::stoi(lock);
    start.isAskedForVersion = isAsked == "1";
    // The engine's processes must not hold the lock beyond the program's end.
    if (start.lock >= 0)
        ::fcntl(start.lock, F_SETFD, FD_CLOEXEC);
    return start;
}
