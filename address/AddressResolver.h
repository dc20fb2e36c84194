#pragma once

#include <QString>
#include <QUrl>

#include <functional>

class DriveTable;
class FileTable;

/// The URL that an address means, as a user types it or as it is stored. The
/// first reading that fits wins:
///   1. a known scheme ("http:", "file:", "about:", ... or anything with "://");
///   2. "X:" or "X:\..." below a drive of `drives`;
///   3. an absolute path, "/" or "\" between the names;
///   4. a path whose leading separator is missing, when its first name is one of
///      those directly below the root;
///   5. a host with or without a port, a path and so on.
/// A name that `files` does not hold is looked for without regard to case, then
/// percent-decoded, then without "#..." and "?..." behind it.
///
/// An invalid URL means that the text cannot be an address. What is valid, the
/// engine takes: the texts for which it would silently show an empty page, or
/// never end loading, are not let through.
QUrl resolveAddress(const QString& typed, const FileTable& files, const DriveTable& drives);

/// `typed`, unless it is the stored path of the licence text in a program folder (start page,
/// first bookmarks) that does not hold it or not any more: then that of the text in `beside`,
/// the folder of the executable. A text of that name that is there is left alone.
QString licenceFound(const QString& typed, const QString& beside, const FileTable& files);

/// Makes an address to open of a text as the user typed it; an invalid one means that the
/// text cannot be an address.
using AddressResolver = std::function<QUrl(const QString& typed)>;

/// Both rules above, with the files and drives of this machine.
AddressResolver machineResolver(const QString& beside);
