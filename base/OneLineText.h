#pragma once

#include <QString>

/// The text as a row of a list shows it: on one line and without control
/// characters. It can be any text that a page has as its title or that was
/// dropped, megabytes with line breaks, so it is cut after 1000 characters.
QString oneLineText(const QString& text);
