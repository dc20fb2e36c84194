#pragma once

#include <QString>

/// Whether this process has a file below `folder` open, in whichever thread.
bool hasOpenFileIn(const QString& folder);
