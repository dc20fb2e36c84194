#pragma once

#include <QString>

#include <functional>

/// The names under which files are saved that servers and pages have named.

/// What the engine puts behind the name of a file that has not all come yet.
QString partialFile(const QString& path);

/// `suggested` as the name of a file in whatever folder: without folders,
/// control and invisible characters, leading dots, characters and names that
/// other systems reserve. It fits a file system, with the engine's suffix for
/// partial files, and is never empty.
QString safeFileName(const QString& suggested);

/// `name`, or "name (2).ext" and so on if it is taken. `name` is safe, and so is
/// the result.
QString freeFileName(const QString& name, const std::function<bool(const QString&)>& isTaken);

/// Whether opening a file may run it: programs, scripts, starters, installers.
/// Told by the name alone if `path` names no file.
bool runsWhenOpened(const QString& path);
