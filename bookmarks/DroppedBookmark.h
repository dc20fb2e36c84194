#pragma once

#include "history/HistoryList.h"

#include <QString>

struct DroppedAddress;

/// The bookmark that a drop on the archive's tree stands for.
struct DroppedBookmark {
    QString title;
    QString url;
};

/// The first file wins over the text; both parts are empty when there is neither. The
/// title comes from the history, or else from the address.
DroppedBookmark droppedBookmark(const DroppedAddress& dropped, const HistoryCollection& history);

/// Whether the selected node takes a drop. The root is known by its text, so a
/// bookmark or folder of that name takes none either.
bool takesDrop(const QString& nodeText);
