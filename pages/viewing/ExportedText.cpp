#include "pages/viewing/ExportedText.h"

#include "base/Windows1252.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largest = 4'000'000;

/// Whether `bytes` begin as one of the formats does.
bool beginsAsExport(const QByteArray& bytes)
{
    static const std::array begins{
        "<HTML><BODY>\r\n"_ba, "<HTML><TITLE></TITLE><BODY>\r\n"_ba,
        "<!DOCTYPE NETSCAPE-Bookmark-file-1>\r\n<!--This is an automatically generated file.It "_ba};
    const auto isBegin = [&bytes](const QByteArray& begin) { return bytes.startsWith(begin); };
    return (bytes.startsWith("Thema: ") && bytes.contains("\r\n\r\n")) ||
           std::any_of(begins.begin(), begins.end(), isBegin);
}

bool isUtf8(const QByteArray& bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = decoder(bytes); // the decoder works when its result is taken
    return !decoder.hasError();
}

} // namespace

std::optional<QString> exportedText(const QString& path)
{
    constexpr qint64 enough = 1000; // for the longest begin, with a folder's name
    QFile file(path);
    // A pipe of that name would hold the reader up.
    if (!QFileInfo(path).isFile() || file.size() > largest || !file.open(QIODevice::ReadOnly))
        return {};
    QByteArray bytes = file.read(enough);
    if (!beginsAsExport(bytes))
        return {};
    bytes += file.read(largest);
    if (isUtf8(bytes)) // all of it plain ASCII, as a rule
        return {};
    return fromWindows1252(bytes);
}
