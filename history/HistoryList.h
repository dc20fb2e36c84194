#pragma once

#include "base/KeyedCollection.h"
#include "history/HistoryItem.h"

#include <memory>

/// The visited addresses of this run, oldest first, without keys.
using HistoryCollection = KeyedCollection<std::shared_ptr<HistoryItem>>;

/// Puts a visit into the list. An address that is there already (exact,
/// case-sensitive) keeps its place with the new title and time; otherwise the
/// oldest entry goes, once, when the list has reached `historyRows`, and the
/// visit is appended. A list longer than a lowered limit keeps its length.
///
/// Throws NotFoundError, and adds nothing, when the limit is 0 or less and the
/// list is empty.
void addVisit(HistoryCollection& history, const QString& url, const QString& title,
              const QDateTime& now, int historyRows);
