#pragma once

class QWebEngineProfile;

/// Names the folder of the installed dictionaries to the engine, unless the
/// environment does. To be called before the engine starts.
void announceDictionaries();

/// Switches the spell check of `profile` on for the user's languages, as far as
/// dictionaries are there; without any it stays off.
void startSpellCheck(QWebEngineProfile& profile);
