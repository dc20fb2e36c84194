#include "app/CommandLine.h"

#include <string_view>
#include <sys/stat.h>

std::string commandLineText(int count, const char* const* arguments)
{
    std::string text;
    for (int i = 1; i < count; ++i) {
        if (i > 1)
            text += ' ';
        text += arguments[i];
    }
    return text;
}

Question questionOf(int count, const char* const* arguments)
{
    const std::string_view first = count > 1 ? arguments[1] : "";
    if (first == "--version")
        return Question::Version;
    return first == "--help" ? Question::Help : Question::None;
}

std::string programTitle()
{
    return "Tessera " TESSERA_VERSION;
}

std::string versionText()
{
    return programTitle() + "\n";
}

std::string helpText()
{
    return "Aufruf: tessera [Adresse]\n"
           "\n"
           "Öffnet die Adresse in einem neuen Browserfenster. Läuft Tessera schon, übergibt\n"
           "der zweite Start die Adresse an das laufende Programm; ohne Adresse holt er\n"
           "dessen Fenster nach vorn.\n"
           "\n"
           "  --help     zeigt diese Hilfe\n"
           "  --version  zeigt die Version\n";
}

std::string refusal(bool isRoot, bool sandboxDisabled)
{
    if (!isRoot || sandboxDisabled)
        return {};
    return "Als root läuft Tessera nur ohne die Sandbox der Browser-Engine: Bitte als anderer "
           "Benutzer starten oder QTWEBENGINE_DISABLE_SANDBOX=1 setzen.";
}

std::string absoluteIfFile(const std::string& address, const std::string& folder)
{
    if (address.empty() || address.front() == '/')
        return address;
    const std::string path = folder + (folder.ends_with('/') ? "" : "/") + address;
    struct stat info = {};
    const bool isFile = ::stat(path.c_str(), &info) == 0 && !S_ISDIR(info.st_mode);
    return isFile ? path : address;
}
