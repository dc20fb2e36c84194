#pragma once

#include "browser/EngineControl.h"

#include <QString>

/// The texts that a browser window makes of what its engine reports. The
/// caption and the history follow rules of their own.

/// `text` without one pair of double quotes around it; unchanged if the first
/// and the last of at least two characters are not both quotes.
QString StripQuotes(const QString& text);

/// The caption after a completed navigation: the title of the frame that
/// navigated, else that of the window's own document, else the location name.
QString captionOf(const EngineFrame& frame, const std::optional<EngineDocument>& own,
                  const QString& locationName);

/// A visit as it is reported to the history.
struct Visit {
    QString address;
    QString title;
};

/// The address is the location when the event's `url` ends with the location's
/// name (an empty name always does), else that `url`. The title is the
/// navigating frame's, even if empty, and the location's name only where the
/// frame has no document.
Visit visitOf(const EngineFrame& frame, const QString& url, const QString& locationUrl,
              const QString& locationName);

/// Whether an address is short enough for a window's list and the history: a page can give
/// itself addresses of two million characters, twenty in a second.
bool isKept(const QString& address);

/// `address` as the address line shows it: one that is not kept only by its beginning.
QString addressShown(const QString& address);

/// The address of a link, as a page gives it, for the status line: encoded, so that no
/// character changes the direction of the text, and no letter passes for another one.
QString linkShown(const QString& address);

/// `text` as a window caption: on one line, without invisible characters. "[*]", in which
/// QWidget would show whether the window is modified, is doubled.
QString windowCaption(const QString& text);

/// What the caption of a private window ends with.
inline constexpr QStringView privateMark = u" (privat)";
/// The caption of a private window, made of what it would be without the mark.
QString privateCaption(const QString& caption);
