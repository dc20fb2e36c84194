#pragma once

#include <QString>
#include <QUrl>

/// The page that is shown for a text that is no address, and the address under which
/// the engine knows it: this carries the typed text, so that it is
/// still there when the user comes back to the page.
namespace WebErrorPage {

QUrl url(const QString& typed);
bool isAt(const QUrl& url);
/// Whether `url` holds the text of the page itself, as a data address.
bool isContent(const QUrl& url);
/// The page in German, with the typed text (a very long one shortened), and a button that has
/// the focus and searches for it: a link to `search`. An invalid `search` is explained instead.
QString html(const QString& typed, const QUrl& search);

/// Whether a document at `address` is a page of the engine's about an error.
bool isEnginesOwn(const QString& address);
/// A script that shows "Unsichere Verbindung" and `reason`, plain text with empty lines between
/// its paragraphs, in place of such a page's own text.
QString replacement(const QString& reason);

/// The address of the page at `url` as the user sees it: the typed text for
/// the error page, the fully encoded address for any other.
QString shownAddress(const QUrl& url);

} // namespace WebErrorPage
