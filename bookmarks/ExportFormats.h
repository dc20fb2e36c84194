#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QLocale>

class Book;
class Thema;

/// The time of an export: local wall-clock time and the locale for the name of
/// the month.
struct ExportTime {
    QDateTime now;
    QLocale locale;
};

/// The Netscape bookmark file for one folder or the whole archive. Nothing is
/// escaped. The time stamps count the seconds of the wall clock, without regard
/// to the time zone. Throws OverflowError when they leave 32 bits.
QByteArray exportFolderNetscape(const Thema& folder, const ExportTime& time);
QByteArray exportArchiveNetscape(const Book& book, const ExportTime& time);
