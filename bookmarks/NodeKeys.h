#pragma once

#include "bookmarks/Thema.h"

#include <QString>
#include <QStringView>

/// The nodes of the archive tree by their keys: the numbers in a key are those
/// of the folder and the bookmark, never positions.

QString rootNodeKey();
QString folderNodeKey(qint32 themaNr);
QString bookmarkNodeKey(qint32 themaNr, qint16 bookmarkNr);

/// Splits a key at its first "@". `right` stays as it was when nothing follows
/// it. Throws OverflowError past 16 bits, ConversionError for other keys.
void splitNodeKey(QStringView key, qint16& left, qint16& right);

/// The position (from 1) of the first folder with this number, 0 without one.
void GetDirIdx(const ThemaCollection& folders, qint32 number, qint16& position);
/// The position (from 1) of the first bookmark with this number, 0 without one.
void GetBookmarkIdx(const BookmarkCollection& bookmarks, qint16 number, qint16& position);
