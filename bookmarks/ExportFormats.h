#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QLocale>
#include <QString>

class Book;
class Thema;

/// The formats of an export: the content of the file for one folder or the whole archive.
/// Texts are written in Windows-1252 exactly as they are stored, nothing is escaped, and
/// every line ends with CR LF.

/// Plain text. A heading that is not empty comes first.
QByteArray exportFolderText(const Thema& folder);
QByteArray exportArchiveText(const Book& book, const QString& heading = {});

/// A simple HTML page.
QByteArray exportFolderHtml(const Thema& folder);
QByteArray exportArchiveHtml(const Book& book);

/// The time of an export: local wall-clock time, and the locale for the name of the month.
struct ExportTime {
    QDateTime now;
    QLocale locale;
};

/// The Netscape bookmark file. Its time stamps count the seconds of the wall clock,
/// without regard to the time zone. Throws OverflowError when they leave 32 bits.
QByteArray exportFolderNetscape(const Thema& folder, const ExportTime& time);
QByteArray exportArchiveNetscape(const Book& book, const ExportTime& time);
