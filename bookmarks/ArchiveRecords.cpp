#include "bookmarks/ArchiveRecords.h"

#include "base/RecordField.h"
#include "base/WholeNumber.h"

namespace {
constexpr qsizetype fileNameWidth = 128;

/// How many whole records there are.
qint16 recordCount(QByteArrayView bytes, qsizetype recordSize)
{
    return toInt16(bytes.size() / recordSize);
}
} // namespace

QString themaKey(qint32 themaNr)
{
    return u'>' + QString::number(themaNr);
}

QString bookmarkKey(qint32 themaNr, qint16 bookmarkNr)
{
    return themaKey(themaNr) + u'|' + QString::number(bookmarkNr);
}

std::shared_ptr<BookmarkCollection> readBookmarks(QByteArrayView bytes, qint32 themaNr)
{
    const qint16 count = recordCount(bytes, bookmarkRecordSize);
    const QString prefix = themaKey(themaNr) + u'|';
    auto bookmarks = std::make_shared<BookmarkCollection>();
    bookmarks->reserve(count);
    for (qsizetype i = 0; i < count; ++i) {
        RecordReader reader(bytes.sliced(i * bookmarkRecordSize, bookmarkRecordSize));
        auto bookmark = std::make_shared<Bookmark>();
        const qint16 number = reader.int16();
        bookmark->Nr(number);
        bookmark->Titel(reader.text(titelWidth));
        bookmark->Url(reader.text(urlWidth));
        bookmark->Info(reader.text(infoWidth));
        bookmarks->Add(std::move(bookmark), prefix + QString::number(number));
    }
    return bookmarks;
}

QByteArray writeBookmarks(const BookmarkCollection& bookmarks)
{
    RecordWriter writer(bookmarks.Count() * bookmarkRecordSize);
    qint16 number = 0;
    for (const auto& bookmark : bookmarks) {
        number = addWhole(number, 1);
        writer.int16(number)
            .text(bookmark->Titel(), titelWidth)
            .text(bookmark->Url(), urlWidth)
            .text(bookmark->Info(), infoWidth);
    }
    return writer.bytes();
}

std::vector<ThemaRec> readThemaRecords(QByteArrayView bytes)
{
    const qint16 count = recordCount(bytes, themaRecordSize);
    std::vector<ThemaRec> records(static_cast<std::size_t>(count));
    qsizetype offset = 0;
    for (ThemaRec& record : records) {
        RecordReader reader(bytes.sliced(offset, themaRecordSize));
        record.sequenz = reader.int32();
        record.number = reader.int32();
        record.dirName = reader.text(dirNameWidth);
        record.fileName = reader.text(fileNameWidth);
        offset += themaRecordSize;
    }
    return records;
}

QByteArray writeThemaRecords(const std::vector<ThemaRec>& records)
{
    RecordWriter writer(static_cast<qsizetype>(records.size()) * themaRecordSize);
    for (const ThemaRec& record : records)
        writer.int32(record.sequenz)
            .int32(record.number)
            .text(record.dirName, dirNameWidth)
            .text(record.fileName, fileNameWidth);
    return writer.bytes();
}
