#include "launcher/CommandLine.h"
#include "launcher/DescriptorLimit.h"
#include "launcher/InstanceClient.h"
#include "launcher/InstancePlace.h"
#include "launcher/ShellStart.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

void complain(const std::string& text)
{
    std::fputs(("Tessera: " + text + "\n").c_str(), stderr);
}

int answer(const std::string& text)
{
    return std::fputs(text.c_str(), stdout) < 0 ? EXIT_FAILURE : EXIT_SUCCESS;
}

std::string environmentText(const char* name)
{
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

std::string currentFolder()
{
    char folder[PATH_MAX] = {}; // NOLINT(modernize-avoid-c-arrays)
    return ::getcwd(folder, sizeof(folder)) == nullptr ? std::string() : std::string(folder);
}

std::string programFolder()
{
    char path[PATH_MAX] = {}; // NOLINT(modernize-avoid-c-arrays)
    if (::readlink("/proc/self/exe", path, sizeof(path) - 1) < 0)
        return ".";
    const std::string text(path);
    return text.substr(0, text.rfind('/'));
}

int runShell(const ShellStart& start)
{
    const std::string module = programFolder() + "/" TESSERA_SHELL;
    // The module asks by itself to be bound at once; the rest is bound as for any program.
    void* library = ::dlopen(module.c_str(), RTLD_LAZY | RTLD_GLOBAL);
    const auto entry =
        library == nullptr
            ? nullptr
            : reinterpret_cast<decltype(&tesseraMain)>(::dlsym(library, "tesseraMain"));
    if (entry == nullptr) {
        complain(::dlerror());
        return EXIT_FAILURE;
    }
    return entry(start);
}

// Says why the program does not start: on the standard error and, as nobody reads that
// on a desktop, in a window.
int giveUp(char* programName, const std::string& reason)
{
    complain(reason);
    if (environmentText("DISPLAY").empty() && environmentText("WAYLAND_DISPLAY").empty())
        return EXIT_FAILURE;
    // In a process of its own: the toolkit aborts where the display is not to be had.
    const pid_t window = ::fork();
    if (window == 0)
        ::_exit(runShell({programName, {}, {}, reason}));
    if (window > 0)
        ::waitpid(window, nullptr, 0);
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv)
{
    switch (questionOf(argc, argv)) {
    case Question::Version:
        return answer(versionText());
    case Question::Help:
        return answer(helpText());
    case Question::None:
        break;
    }
    const std::string reason =
        refusal(::geteuid() == 0, std::getenv("QTWEBENGINE_DISABLE_SANDBOX") != nullptr);
    if (!reason.empty())
        return giveUp(argv[0], reason);

    StartRequest request;
    request.title = programTitle();
    request.address = absoluteIfFile(commandLineText(argc, argv), currentFolder());
    request.activationToken = environmentText("XDG_ACTIVATION_TOKEN");
    request.startupId = environmentText("DESKTOP_STARTUP_ID");
    const InstanceFolder folder = instanceFolder(folderCandidates());
    StartResult result = takePlaceOrHandOver(folder, request);
    switch (result.outcome) {
    case Outcome::HandedOver:
        return EXIT_SUCCESS;
    case Outcome::Failed:
        return giveUp(argv[0], result.error);
    case Outcome::FirstCopy:
        break;
    }
    const std::string tooFew = refusal(raiseDescriptorLimit());
    if (!tooFew.empty())
        return giveUp(argv[0], tooFew);
    result.lock.keepUntilExit();
    return runShell({argv[0], request.address, folder, {}});
}
