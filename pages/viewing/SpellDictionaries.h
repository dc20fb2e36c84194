#pragma once

#include <QStringList>

/// Has the engine take its dictionaries from where the distribution installs them, unless it
/// finds some beside the program, in its own folder, or in the folder that the environment
/// names. To be called before the engine starts.
void announceDictionaries();

/// The names of the dictionaries that the engine finds: "de_DE", "en-US".
QStringList installedDictionaries();

/// The dictionaries to check spelling with, among those `installed`: those of the user's
/// languages ("de-AT", "fr"), then German, then English. Of one language only one is taken: for
/// the user's own country, else for the language's home country, else any.
QStringList spellLanguages(const QStringList& installed, const QStringList& userLanguages);
