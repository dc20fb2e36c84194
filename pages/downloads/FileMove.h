#pragma once

#include <QString>

#include <atomic>

/// What became of a file that was to be moved.
enum class FileMove { Done, TargetExists, OtherFileSystem, Cancelled, NoSpace, Denied, Failed };

/// Gives the file `from` the name `to`, in the same file system. An existing file is replaced
/// only if that is wanted.
FileMove renameFile(const QString& from, const QString& to, bool replaces);

/// Copies `from` into the new or overwritten file `to`, which is as readable as `from`, and
/// breaks off when `isCancelled` becomes true. What is not whole is removed. May take long.
FileMove copyFile(const QString& from, const QString& to, const std::atomic_bool& isCancelled);
