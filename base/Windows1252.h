#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

/// The single-byte code page of all files. Every byte survives the way to text
/// and back (the five unassigned ones as U+0081, U+008D, U+008F, U+0090 and
/// U+009D); a character that has no byte becomes one "?".
void appendWindows1252(QByteArray& bytes, QStringView text);
/// The same into memory that has room for a byte a unit. Returns how many bytes there are.
qsizetype toWindows1252(char* out, QStringView text);
QString fromWindows1252(QByteArrayView bytes);
