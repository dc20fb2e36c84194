#pragma once

#include <QString>

/// The caption of a browser window's entry in the window list, counted from 1. The
/// first nine have their number as access key. `title` as QWidget::windowTitle has it.
QString windowListEntry(int number, const QString& title);
