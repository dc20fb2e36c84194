#pragma once

#include <QStringList>

/// The dictionaries to check spelling with, among the names of those that are
/// installed ("de_DE", "en-US"): those of the user's languages ("de-AT", "fr"),
/// then German, then English. Of one language the user's own country comes
/// first, else the language's home country, and only one is taken.
QStringList spellLanguages(const QStringList& installed, const QStringList& userLanguages);
