#include "bookmarks/ExportLines.h"

#include "base/Windows1252.h"

ExportLines& ExportLines::add(QByteArrayView bytes)
{
    m_bytes.append(bytes);
    return *this;
}

ExportLines& ExportLines::add(QStringView text)
{
    appendWindows1252(m_bytes, text);
    return *this;
}
