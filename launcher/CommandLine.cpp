#include "launcher/CommandLine.h"

#include <string_view>
#include <sys/stat.h>

namespace {

// The bytes of the character that `lead` begins; 0 when none begins so.
std::size_t characterBytes(unsigned char lead)
{
    if (lead < 0x80)
        return 1;
    if (lead < 0xC2 || lead > 0xF4)
        return 0;
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

// Whether a second byte makes a character that has no shorter form, is no half of a
// pair and exists at all.
bool isSecondByte(unsigned char lead, unsigned char second)
{
    const unsigned char least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned char most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    return second >= least && second <= most;
}

bool isUtf8(std::string_view text)
{
    while (!text.empty()) {
        const auto lead = static_cast<unsigned char>(text[0]);
        const std::size_t size = characterBytes(lead);
        if (size == 0 || size > text.size() ||
            (size > 1 && !isSecondByte(lead, static_cast<unsigned char>(text[1]))))
            return false;
        for (std::size_t i = 2; i < size; ++i)
            if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80)
                return false;
        text.remove_prefix(size);
    }
    return true;
}

std::string fileAddress(std::string_view path)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr std::string_view plain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
    std::string address = "file://";
    for (const char c : path) {
        if (plain.find(c) != std::string_view::npos) {
            address += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        address += '%';
        address += digits[byte / 16U];
        address += digits[byte % 16U];
    }
    return address;
}

} // namespace

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
           "  --version  zeigt die Versionen von Tessera und seiner Browser-Engine\n";
}

std::string absoluteIfFile(const std::string& address, const std::string& folder)
{
    if (address.empty())
        return address;
    const bool isAbsolute = address.front() == '/';
    const std::string path =
        isAbsolute ? address : folder + (folder.ends_with('/') ? "" : "/") + address;
    struct stat info = {};
    if (::stat(path.c_str(), &info) != 0)
        return address;
    const bool isPath = address.find('/') != std::string::npos || address == "." || address == "..";
    if (!isPath && S_ISDIR(info.st_mode))
        return address;
    return isUtf8(path) ? path : fileAddress(path);
}
