#pragma once

#include <QString>

/// Texts as the program shows them. Titles of pages, names of files and whatever is
/// dropped come from strangers: they may be megabytes long, hold line breaks and tags, or
/// characters that hide or turn round others.

/// Whether nothing is drawn for the character, or it turns the direction of those behind
/// it: controls, format marks, and the tags of U+E0000 on. Line breaks and tabs are
/// controls, too.
bool isInvisible(char32_t character);

/// A message without invisible characters except its line breaks. It may be shown in a
/// terminal, where controls would be commands.
QString messageText(const QString& text);

/// The text as a caption or a row of a list shows it: on one line, without invisible
/// characters, cut after 1000 characters.
QString oneLineText(const QString& text);

/// A tool tip, in HTML, that shows `text` on lines that fit the screen: its tags as plain
/// characters, cut after 500 characters.
QString plainToolTip(const QString& text);
