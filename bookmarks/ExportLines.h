#pragma once

#include "bookmarks/Book.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QStringView>

/// The lines of an export file: texts in Windows-1252 exactly as they are, every
/// line ended by CR LF.
class ExportLines {
public:
    ExportLines& add(QByteArrayView bytes);
    ExportLines& add(QStringView text);
    ExportLines& endLine() { return add("\r\n"); }
    ExportLines& line(QByteArrayView bytes) { return add(bytes).endLine(); }

    const QByteArray& bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

/// Calls `each` with every bookmark of the folder, in order.
template <typename Each>
void forEachBookmark(const Thema& folder, Each each)
{
    if (const auto& bookmarks = folder.colBookmark())
        for (const auto& bookmark : *bookmarks)
            each(*bookmark);
}

/// Calls `each` with every folder of the archive, in order.
template <typename Each>
void forEachThema(const Book& book, Each each)
{
    if (const auto& folders = book.colThema())
        for (const auto& folder : *folders)
            each(*folder);
}
