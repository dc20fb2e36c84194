#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

/// Fixed-size binary records: little-endian whole numbers, and texts in
/// Windows-1252 that are cut or padded with blanks on the right. All sizes and
/// offsets are in bytes.

/// Builds one record, field after field.
class RecordWriter {
public:
    explicit RecordWriter(qsizetype recordSize) { m_bytes.reserve(recordSize); }

    RecordWriter& int16(qint16 value);
    RecordWriter& int32(qint32 value);
    RecordWriter& text(QStringView value, qsizetype width);

    const QByteArray& bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

/// Takes one record apart, field after field. What lies behind the end of
/// `record` reads as zero bytes. The bytes must outlive the reader.
class RecordReader {
public:
    explicit RecordReader(QByteArrayView record) : m_record(record) {}

    qint16 int16();
    qint32 int32();
    /// The text without the blanks (0x20 only) at both ends.
    QString text(qsizetype width);

private:
    template <typename Int>
    Int number();
    QByteArrayView take(qsizetype width);

    QByteArrayView m_record;
    qsizetype m_offset = 0;
};

/// `text` without the blanks at both ends; other white space stays.
QStringView trimBlanks(QStringView text);
