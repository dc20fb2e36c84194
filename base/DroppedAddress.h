#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class QMimeData;

/// What a drop offers as addresses. File managers add their list of files as
/// plain text too; then the text counts as absent. A list of web addresses
/// counts as text.
struct DroppedAddress {
    std::optional<QString> text;
    QStringList files;

    bool isEmpty() const { return !text && files.isEmpty(); }
};
DroppedAddress droppedAddress(const QMimeData& data);
