#pragma once

#include <QString>

class QUrl;

/// A page's own words, fit for a window of this program: without what could
/// turn, hide or fake the text around them, and cut where they grow too long.
/// Line breaks stay, blank lines in a row become one.
QString cleanText(const QString& text);
/// As cleanText, for one line of at most `most` characters.
QString cleanLine(const QString& text, qsizetype most = 120);

/// The site that speaks or asks, as the user is told: scheme, host and port of
/// `url`; of a very long host the end, which says whose it is.
QString siteName(const QUrl& url);

/// Whether what is sent to `url` can be read on its way.
bool isReadableOnTheWay(const QUrl& url);
