#pragma once

#include <QString>

/// A tool tip that shows any `text` as it stands, tags and all, cut and broken so
/// that it stays on the screen.
QString plainToolTip(const QString& text);
