#pragma once

#include "history/HistoryList.h"

#include <QString>

/// The title for a dropped address: that of the first visit to exactly this
/// address, even an empty one; without a visit the address's last part.
QString GetUrlTitle(const QString& url, const HistoryCollection& history);
