#pragma once

#include <QString>
#include <QUrl>

#include <optional>
#include <vector>

class FileTable;

/// A path and what stands behind it in a URL ("?query#fragment"), if anything.
struct PathReading {
    QString path;
    QString tail;
};

/// `path` with "/" between the names.
QString withSlashes(QString path);
/// `text` with its "%XX" read as UTF-8 bytes; a "%" that begins none stays.
QString percentDecoded(const QString& text);
/// `path` cut before its first "?" or "#".
PathReading withoutTail(const QString& path);

/// An absolute path without ".", ".." and empty names; nothing is above the root. A
/// separator at the end stays.
QString cleanPath(const QString& path);

/// The URL of an absolute path.
QUrl fileUrl(const QString& path);
QUrl withTail(const QUrl& url, const QString& tail);

/// An absolute path as the file system spells it: a name that is not there as
/// written is looked for without regard to case. Nothing when a name is missing. A
/// separator at the end stays if the path leads to a folder.
std::optional<QString> spelledOnDisk(const QString& path, const FileTable& files);

/// The URL of the first reading whose path is there.
std::optional<QUrl> firstThere(const std::vector<PathReading>& readings, const FileTable& files);
