#pragma once

#include <QString>

/// Whether the character is not to be seen, or turns the direction of those behind it:
/// controls, format marks, and the tags beyond the BMP. Line breaks and tabs are controls.
bool isInvisible(char32_t character);

/// A message without invisible characters but its line breaks: names of files and programs
/// in it can be anybody's, and it may end up in a terminal.
QString messageText(const QString& text);

/// The text as a caption or a row of a list shows it: on one line and without invisible
/// characters. It can be any text that a page has as its title or that was dropped,
/// megabytes with line breaks, so it is cut after 1000 characters.
QString oneLineText(const QString& text);
