#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class QMimeData;

/// What a drop offers as addresses: a text, files, or both.
///
/// A list of addresses that holds no local file is the text: its first address. So a
/// link dragged out of a page counts by its address, not by its label. Of an image the
/// engine offers a file that it has just made; the image's own address counts.
/// File managers add their list of files as plain text too; then the text counts as
/// absent.
struct DroppedAddress {
    std::optional<QString> text;
    /// Paths of this system; "file:" addresses where a name is no text, or begins with a
    /// drive's letter.
    QStringList files;

    bool isEmpty() const { return !text && files.isEmpty(); }
};
DroppedAddress droppedAddress(const QMimeData& data);
