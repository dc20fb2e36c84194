#pragma once

#include <QUrl>

#include <functional>

/// The address under which the search engine at `engine` answers `query`. Of well-known engines
/// the path and the query item are known; any other gets the item "q". What else `engine` has in
/// its query stays. Invalid when `engine` is no address of the web, or `query` is empty.
QUrl searchAddress(const QUrl& engine, const QString& query);

/// Makes the address that searches for a text with the user's search engine; an invalid one when
/// that is not known, or the text is nothing to search for.
using SearchResolver = std::function<QUrl(const QString& query)>;
