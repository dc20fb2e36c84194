#pragma once

#include <QByteArray>
#include <QString>

class Book;
class Thema;

/// Plain text: the content of the file for one folder or the whole archive.
QByteArray exportFolderText(const Thema& folder);
QByteArray exportArchiveText(const Book& book, const QString& heading = {});
