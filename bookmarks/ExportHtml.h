#pragma once

#include <QByteArray>

class Book;
class Thema;

/// A simple HTML page for one folder or the whole archive. Nothing is escaped.
QByteArray exportFolderHtml(const Thema& folder);
QByteArray exportArchiveHtml(const Book& book);
