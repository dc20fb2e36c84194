#include "app/OpenWindows.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {
/// Of the file's layout; another one is not read.
constexpr int version = 1;
/// As many as the frame can number.
constexpr qsizetype mostWindows = 32767;
/// Beyond it a place says nothing about a screen, in pixels.
constexpr int farthest = 100'000;

QJsonArray toJson(const QRect& place)
{
    return {place.x(), place.y(), place.width(), place.height()};
}

std::optional<QRect> toRect(const QJsonValue& value)
{
    const QJsonArray numbers = value.toArray();
    if (numbers.size() != 4)
        return std::nullopt;
    std::array<int, 4> read{};
    for (std::size_t i = 0; i < read.size(); ++i) {
        read[i] = numbers.at(static_cast<qsizetype>(i)).toInt(farthest + 1);
        if (read[i] < -farthest || read[i] > farthest)
            return std::nullopt;
    }
    return QRect(read[0], read[1], read[2], read[3]);
}

QJsonObject toJson(const OpenWindows::Window& window)
{
    return {{u"address"_s, window.address},
            {u"title"_s, window.title},
            {u"place"_s, toJson(window.place)},
            {u"state"_s, static_cast<int>(window.state)}};
}

std::optional<OpenWindows::Window> toWindow(const QJsonObject& json)
{
    const auto place = toRect(json.value("place"_L1));
    const int state = json.value("state"_L1).toInt(-1);
    if (!place || state < 0 || state > static_cast<int>(OpenWindows::State::Maximised) ||
        !json.value("address"_L1).isString())
        return std::nullopt;
    return OpenWindows::Window{json.value("address"_L1).toString(),
                               json.value("title"_L1).toString(), *place,
                               static_cast<OpenWindows::State>(state)};
}
} // namespace

QByteArray openWindowsToBytes(const OpenWindows& open)
{
    QJsonArray windows;
    for (const OpenWindows::Window& window : open.windows)
        windows.append(toJson(window));
    const QJsonObject all{
        {u"version"_s, version},          {u"windows"_s, windows},
        {u"active"_s, open.active},       {u"arrangement"_s, static_cast<int>(open.arrangement)},
        {u"frame"_s, toJson(open.frame)}, {u"maximised"_s, open.isFrameMaximised}};
    return QJsonDocument(all).toJson(QJsonDocument::Compact);
}

std::optional<OpenWindows> openWindowsFromBytes(const QByteArray& bytes)
{
    constexpr int none = static_cast<int>(Arrangement::None);
    const QJsonObject all = QJsonDocument::fromJson(bytes).object();
    const QJsonArray windows = all.value("windows"_L1).toArray();
    const auto frame = toRect(all.value("frame"_L1));
    const int arrangement = all.value("arrangement"_L1).toInt(none - 1);
    if (all.value("version"_L1).toInt() != version || windows.size() > mostWindows || !frame ||
        arrangement < none || arrangement > static_cast<int>(Arrangement::TileVertical))
        return std::nullopt;
    OpenWindows open;
    for (const auto& value : windows) {
        const auto window = toWindow(value.toObject());
        if (!window)
            return std::nullopt;
        open.windows.append(*window);
    }
    open.active = std::clamp<qsizetype>(all.value("active"_L1).toInt(-1), -1, windows.size() - 1);
    open.arrangement = static_cast<Arrangement>(arrangement);
    open.frame = *frame;
    open.isFrameMaximised = all.value("maximised"_L1).toBool();
    return open;
}
