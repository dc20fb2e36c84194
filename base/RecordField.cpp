#include "base/RecordField.h"

#include "base/Windows1252.h"

#include <QtEndian>

#include <algorithm>
#include <array>

namespace {
template <typename Int>
void appendLittleEndian(QByteArray& bytes, Int value)
{
    std::array<char, sizeof(Int)> raw{};
    qToLittleEndian(value, raw.data());
    bytes.append(raw.data(), static_cast<qsizetype>(raw.size()));
}

/// Takes whole blocks of blanks away first, as most of a field is padding: an archive is
/// loaded faster.
QByteArrayView withoutEndBlanks(QByteArrayView field)
{
    constexpr QByteArrayView block("                                ");
    while (field.endsWith(block))
        field.chop(block.size());
    while (field.endsWith(' '))
        field.chop(1);
    return field;
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
    const qsizetype end = m_bytes.size() + width;
    // Converted before it is cut: two UTF-16 units may become a single byte.
    appendWindows1252(m_bytes, value.left(2 * width));
    const qsizetype filled = std::min(m_bytes.size(), end);
    m_bytes.resize(end);
    std::fill(m_bytes.begin() + filled, m_bytes.end(), ' ');
    return *this;
}

template <typename Int>
Int RecordReader::number()
{
    std::array<char, sizeof(Int)> raw{};
    const QByteArrayView there = take(sizeof(Int));
    std::copy(there.begin(), there.end(), raw.begin());
    return qFromLittleEndian<Int>(raw.data());
}

qint16 RecordReader::int16()
{
    return number<qint16>();
}

qint32 RecordReader::int32()
{
    return number<qint32>();
}

QString RecordReader::text(qsizetype width)
{
    QByteArrayView field = take(width);
    const qsizetype missing = width - field.size();
    while (field.startsWith(' '))
        field = field.sliced(1);
    if (missing > 0)
        return fromWindows1252(field) + QString(missing, QChar(0));
    return fromWindows1252(withoutEndBlanks(field));
}

QByteArrayView RecordReader::take(qsizetype width)
{
    const qsizetype here = std::min(m_offset, m_record.size());
    const qsizetype there = std::min(m_offset + width, m_record.size());
    m_offset += width;
    return m_record.sliced(here, there - here);
}

QStringView trimBlanks(QStringView text)
{
    while (text.startsWith(u' '))
        text = text.sliced(1);
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}
