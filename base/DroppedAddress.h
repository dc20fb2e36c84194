#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class QMimeData;

/// What a drop offers as addresses: a text, files, or both.
///
/// A list of addresses that holds no local file gives the text: its first address. So a
/// link dragged out of a page counts by its address, not by its label. For an image the
/// engine offers a temporary file; the image's own address counts. File managers offer
/// their list of files as plain text, too; such a text counts as absent.
struct DroppedAddress {
    std::optional<QString> text;
    /// Paths of this system; "file:" addresses where a path is not UTF-8 or begins with a
    /// drive's letter.
    QStringList files;

    bool isEmpty() const { return !text && files.isEmpty(); }
};
DroppedAddress droppedAddress(const QMimeData& data);
