#include "launcher/FindAppWindow.h"

#include <cstddef>
#include <string_view>

namespace {

constexpr std::size_t captionCharacters = 255;

// The first characters of a UTF-8 text; broken bytes count as characters.
std::string_view firstCharacters(std::string_view text, std::size_t count)
{
    std::size_t end = 0;
    for (; end < text.size(); ++end) {
        const bool startsCharacter = (static_cast<unsigned char>(text[end]) & 0xC0) != 0x80;
        if (startsCharacter && count-- == 0)
            break;
    }
    return text.substr(0, end);
}

// Lower case for the letters of the Western alphabets: plain ones and, behind
// their common lead byte, U+00C0 to U+00DE.
std::string lowered(std::string_view text)
{
    std::string result(text);
    for (std::size_t i = 0; i < result.size(); ++i) {
        const auto byte = static_cast<unsigned char>(result[i]);
        const bool accented =
            i > 0 && result[i - 1] == '\xC3' && byte >= 0x80 && byte <= 0x9E && byte != 0x97;
        if ((byte >= 'A' && byte <= 'Z') || accented)
            result[i] = static_cast<char>(byte + 0x20);
    }
    return result;
}

} // namespace

std::string FindAppWindow(std::string_view prefix, const std::vector<std::string>& captions)
{
    const std::string wanted = lowered(prefix);
    for (const std::string& caption : captions) {
        const std::string_view read = firstCharacters(caption, captionCharacters);
        if (lowered(read).starts_with(wanted))
            return std::string(read);
    }
    return std::string(prefix);
}
