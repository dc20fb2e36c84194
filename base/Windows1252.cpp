#include "base/Windows1252.h"

#include <algorithm>
#include <array>

namespace {
// What the bytes 0x80 to 0x9F stand for; all others stand for themselves.
constexpr std::array<char16_t, 32> upperControls{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char toByte(char16_t unit)
{
    if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF))
        return static_cast<char>(unit);
    const auto* const found = std::find(upperControls.begin(), upperControls.end(), unit);
    if (found == upperControls.end())
        return '?';
    return static_cast<char>(0x80 + (found - upperControls.begin()));
}
} // namespace

qsizetype toWindows1252(char* out, QStringView text)
{
    // Most texts hold nothing but what has the same number in both, and need no second look.
    bool isPlain = true;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t unit = text.utf16()[i];
        isPlain = isPlain & (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF));
        out[i] = static_cast<char>(unit);
    }
    if (isPlain)
        return text.size();
    const char* const begin = out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool pair =
            text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        *out++ = toByte(text[i].unicode());
        if (pair)
            ++i;
    }
    return out - begin;
}

void appendWindows1252(QByteArray& bytes, QStringView text)
{
    const qsizetype start = bytes.size();
    bytes.resize(start + text.size());
    bytes.truncate(start + toWindows1252(bytes.data() + start, text));
}

QString fromWindows1252(QByteArrayView bytes)
{
    const auto isUpperControl = [](char byte) {
        const auto value = static_cast<unsigned char>(byte);
        return value >= 0x80 && value <= 0x9F;
    };
    if (std::none_of(bytes.begin(), bytes.end(), isUpperControl))
        return QString::fromLatin1(bytes);
    QString text(bytes.size(), Qt::Uninitialized);
    std::transform(bytes.begin(), bytes.end(), text.begin(), [&isUpperControl](char byte) {
        const auto value = static_cast<unsigned char>(byte);
        return QChar(isUpperControl(byte) ? upperControls[value - 0x80U] : char16_t{value});
    });
    return text;
}
