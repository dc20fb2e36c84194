#pragma once

#include <QString>

class QUrl;

/// A page's own words, fit for a window of this program: without characters that are not
/// seen or that turn the direction of the text around them, and cut where they grow too
/// long. Line breaks stay, blank lines in a row become one.
QString cleanText(const QString& text);
/// As cleanText, for one line of at most `most` characters.
QString cleanLine(const QString& text, qsizetype most = 120);

/// The site at `url` as the user is told its name: scheme, host and port; of a very long
/// host the end, which says whose it is.
QString siteName(const QUrl& url);
