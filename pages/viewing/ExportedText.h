#pragma once

#include <QString>

#include <optional>

/// The text of the local file at `path` if it is an export of the archive that an engine may
/// misread; nothing for all others. Exports are in Windows-1252 and do not say so, and an engine
/// guesses. Nothing, too, for one that somebody has stored in UTF-8 since, and for one so large
/// that a guess has enough to go by.
std::optional<QString> exportedText(const QString& path);
