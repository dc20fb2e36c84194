#pragma once

#include <QString>

#include <functional>

/// The names under which files are saved that servers and pages have named.

/// The file that the engine writes until all of `path` has come.
QString partialFile(const QString& path);

/// Makes `suggested` the name of a file in whatever folder: without folders, control and
/// invisible characters, leading dots, and without characters and names that other systems
/// reserve. The name fits a file system, with the engine's suffix for partial files, too, and
/// is never empty.
QString safeFileName(const QString& suggested);

/// `name`, or "name (2).ext" and so on if it is taken. `name` is safe, and so is the result.
QString freeFileName(const QString& name, const std::function<bool(const QString&)>& isTaken);

/// The name proposed for the PDF file that the page titled `title` is saved in: safe, not too
/// long, and without characters that people stumble over; never empty.
QString pdfFileName(const QString& title);

/// `path` for a message: of a long one the first folders and the name, with "…" between them.
QString shortPath(const QString& path);

/// Whether opening a file may run it: programs, scripts, starters, installers.
/// Told by the name alone if `path` names no file.
bool runsWhenOpened(const QString& path);
