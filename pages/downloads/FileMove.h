#pragma once

#include <QString>

#include <atomic>

/// What became of a file that was to be moved.
enum class FileMove { Done, TargetExists, OtherFileSystem, Cancelled, NoSpace, Denied, Failed };

/// Gives the file `from` the name `to`, in the same file system. A file that is there already is
/// replaced only if `replaces` says so.
FileMove renameFile(const QString& from, const QString& to, bool replaces);

/// Copies `from` into the new or overwritten file `to`, which gets the permissions of `from`, and
/// breaks off when `isCancelled` becomes true. A copy that is not whole is removed. May take
/// long: for a thread of its own.
FileMove copyFile(const QString& from, const QString& to, const std::atomic_bool& isCancelled);
