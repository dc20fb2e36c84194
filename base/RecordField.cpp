#include "base/RecordField.h"

#include "base/Windows1252.h"

#include <QtEndian>

#include <array>

namespace {
template <typename Int>
void appendLittleEndian(QByteArray& bytes, Int value)
{
    std::array<char, sizeof(Int)> raw{};
    qToLittleEndian(value, raw.data());
    bytes.append(raw.data(), static_cast<qsizetype>(raw.size()));
}
} // namespace

RecordWriter& RecordWriter::int16(qint16 value)
{
    appendLittleEndian(m_bytes, value);
    return *this;
}

RecordWriter& RecordWriter::int32(qint32 value)
{
    appendLittleEndian(m_bytes, value);
    return *this;
}

RecordWriter& RecordWriter::text(QStringView value, qsizetype width)
{
    // Convert before cutting: one code point can be two units of the text.
    m_bytes.append(toWindows1252(value.left(2 * width)).leftJustified(width, ' ', true));
    return *this;
}

qint16 RecordReader::int16()
{
    return qFromLittleEndian<qint16>(take(sizeof(qint16)).constData());
}

qint32 RecordReader::int32()
{
    return qFromLittleEndian<qint32>(take(sizeof(qint32)).constData());
}

QString RecordReader::text(qsizetype width)
{
    const QString whole = fromWindows1252(take(width));
    return trimBlanks(whole).toString();
}

QByteArray RecordReader::take(qsizetype width)
{
    const qsizetype here = std::min(m_offset, m_record.size());
    const qsizetype there = std::min(m_offset + width, m_record.size());
    m_offset += width;
    return m_record.sliced(here, there - here).toByteArray().leftJustified(width, '\0');
}

QStringView trimBlanks(QStringView text)
{
    while (text.startsWith(u' '))
        text = text.sliced(1);
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}
