#pragma once

#include <QString>
#include <QStringView>

/// What becomes of a text in a field of the archive's files, of `width` bytes, as a text for
/// the user: that its end is cut off, and which characters turn into "?". Empty when all of it
/// is kept. Line breaks are CR LF, as they are stored.
QString lossesOf(QStringView text, qsizetype width);
