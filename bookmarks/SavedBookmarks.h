#pragma once

#include <QDateTime>
#include <QString>

#include <vector>

/// What others than the archive's window know of it: what is saved. Only read, whether that
/// window is open or not: nothing is created, taken back from a ".bak", or complained about.

struct SavedBookmark {
    QString titel;
    QString url;
};

/// The bookmarks of all folders, in the archive's order, as far as its files can be read. May
/// run in any thread.
std::vector<SavedBookmark> savedBookmarks(const QString& programFolder);

/// When the archive was saved last; no date where there is none.
QDateTime archiveSaved(const QString& programFolder);
