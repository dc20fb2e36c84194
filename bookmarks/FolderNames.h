#pragma once

#include <QString>

#include <functional>

/// Says whether no node of the tree has exactly this text.
using IsFree = std::function<bool(const QString& name)>;

/// The first free name of "Neuer Ordner", "Neuer Ordner (1)", ... Throws
/// OverflowError past 32767.
QString newDirName(const IsFree& isFree);

/// A typed name as the folder gets it: line breaks become blanks, the blanks at
/// both ends go.
QString cleanDirName(QString typed);

enum class DirNameCheck { Unchanged, Empty, Taken, Accepted };

/// Whether a folder named `old` can be named `name`, which is clean.
DirNameCheck checkDirName(const QString& old, const QString& name, const IsFree& isFree);
/// What the user is told about a name that is refused; else empty.
QString dirNameMessage(DirNameCheck check, const QString& name);
