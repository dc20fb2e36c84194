#include "launcher/CommandLine.h"
#include "launcher/DescriptorLimit.h"
#include "launcher/InstanceClient.h"
#include "launcher/ShellStart.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
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
    return std::fputs(text.c_str(), stdout) < 0 || std::fflush(stdout) != 0 ? EXIT_FAILURE
                                                                            : EXIT_SUCCESS;
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

// Why the program must not start as this user, one line, or an empty text.
std::string objectionToUser()
{
    if (::geteuid() != 0 || std::getenv("QTWEBENGINE_DISABLE_SANDBOX") != nullptr)
        return {};
    return "Als root läuft Tessera nur ohne die Sandbox der Browser-Engine: Bitte als anderer "
           "Benutzer starten oder QTWEBENGINE_DISABLE_SANDBOX=1 setzen.";
}

// The same for a limit of descriptors that the engine would soon reach.
std::string objectionToLimit(std::size_t descriptors)
{
    if (descriptors >= leastDescriptors)
        return {};
    return "Tessera braucht mindestens " + std::to_string(leastDescriptors) +
           " offene Dateien auf einmal, erlaubt sind hier " + std::to_string(descriptors) +
           " (ulimit -n).";
}

// Says why the program does not start: on the standard error and, as nobody reads that
// on a desktop, in a window.
int giveUp(char* programName, const std::string& reason)
{
    complain(reason);
    if (environmentText("DISPLAY").empty() && environmentText("WAYLAND_DISPLAY").empty())
        return EXIT_FAILURE;
    // In a process of its own, as Qt aborts where the display cannot be opened.
    const pid_t window = ::fork();
    if (window == 0)
        ::_exit(runShell({.complaint = reason}, programName));
    if (window > 0)
        ::waitpid(window, nullptr, 0);
    return EXIT_FAILURE;
}

// Only the shell knows its engine; it adds its lines to those of this program.
int tellVersions(char* programName)
{
    return answer(versionText()) == EXIT_SUCCESS
               ? runShell({.isAskedForVersion = true}, programName)
               : EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv)
{
    switch (questionOf(argc, argv)) {
    case Question::Version:
        return tellVersions(argv[0]);
    case Question::Help:
        return answer(helpText());
    case Question::None:
        break;
    }
    if (const std::string objection = objectionToUser(); !objection.empty())
        return giveUp(argv[0], objection);

    StartRequest request{programTitle(), {}};
    InstanceMessage& message = request.message;
    message.text = absoluteIfFile(commandLineText(argc, argv), currentFolder());
    message.number =
        message.text.empty() ? InstanceMessage::Number::ToFront : InstanceMessage::Number::HandOver;
    message.activationToken = environmentText("XDG_ACTIVATION_TOKEN");
    message.startupId = environmentText("DESKTOP_STARTUP_ID");
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
    if (const std::string objection = objectionToLimit(raiseDescriptorLimit()); !objection.empty())
        return giveUp(argv[0], objection);
    result.lock.keep();
    return runShell({.address = message.text, .socketPath = folder.socketPath()}, argv[0]);
}
