#pragma once

#include <QDate>
#include <QString>

/// Copies of the whole archive, each a folder that has the day's name ("2026-11-22"), with the
/// files as they were before the first change of that day. A folder of this name is whole,
/// whenever the program was killed: it is made under another name and renamed.

/// Makes the copy of `today` in `copiesFolder`, which is made where it is missing, and keeps the
/// last ten. Nothing is done where there is one of `today`, or no archive in `programFolder`.
/// Returns why it could not be made, as a text for the user; else an empty one.
QString makeDatedCopy(const QString& programFolder, const QString& copiesFolder, QDate today);
