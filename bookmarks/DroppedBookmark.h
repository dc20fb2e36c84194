#pragma once

#include "history/HistoryList.h"

#include <QString>

struct DroppedAddress;

/// The bookmark that a drop on the archive's tree stands for.
struct DroppedBookmark {
    QString title;
    QString url;
};

/// The first file wins over the text; both parts are empty when there is neither.
DroppedBookmark droppedBookmark(const DroppedAddress& dropped, const HistoryCollection& history);

/// How the archive notes a dropped address. "file:///" goes: before a drive's letter it
/// goes everywhere, and "\" stands for every "/"; of a file of this system the path
/// stays, as if the file itself had been dropped. Any other text stays as it is.
QString archivedUrl(const QString& dropped);

/// Whether the selected node takes a drop. The root is known by its text, so a
/// bookmark or folder of that name takes none either.
bool takesDrop(const QString& nodeText);
