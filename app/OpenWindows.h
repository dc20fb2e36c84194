#pragma once

#include "app/Arrangement.h"

#include <QByteArray>
#include <QList>
#include <QRect>
#include <QString>

#include <optional>

/// The browser windows of a run as they stand at one moment, so that a later run can bring
/// them back. Places are in pixels.
struct OpenWindows {
    enum class State { Normal, Minimised, Maximised };

    struct Window {
        QString address;
        QString title;
        /// In the frame's area.
        QRect place;
        State state = State::Normal;

        bool operator==(const Window&) const = default;
    };

    /// In the order of the window list.
    QList<Window> windows;
    /// The index of the active one, 0-based; -1 without one.
    qsizetype active = -1;
    Arrangement arrangement = Arrangement::None;
    /// On the screen, when the frame is neither minimised nor maximised.
    QRect frame;
    bool isFrameMaximised = false;

    bool operator==(const OpenWindows&) const = default;
};

/// The windows as the bytes of a file.
QByteArray openWindowsToBytes(const OpenWindows& open);
/// Nothing if `bytes` are not such a file, whole and sound.
std::optional<OpenWindows> openWindowsFromBytes(const QByteArray& bytes);
