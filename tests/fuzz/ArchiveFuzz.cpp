#include "base/Errors.h"
#include "bookmarks/ArchiveRecords.h"
#include "tests/fuzz/Fuzz.h"

namespace {
/// What was read can be written, and reads the same; only the numbers are new.
void readFolder(QByteArrayView bytes)
{
    const auto first = readBookmarks(bytes, 7);
    require(first->Count() == bytes.size() / bookmarkRecordSize, "whole records count");
    const QByteArray once = writeBookmarks(*first);
    require(writeBookmarks(*readBookmarks(once, 7)) == once, "what was written reads the same");
}

void readIndex(QByteArrayView bytes)
{
    const QByteArray once = writeThemaRecords(readThemaRecords(bytes));
    require(writeThemaRecords(readThemaRecords(once)) == once, "what was written reads the same");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView bytes(data, static_cast<qsizetype>(size));
    try {
        readIndex(bytes);
        readFolder(bytes);
    } catch (const Error&) { // a refusal is a good end
    }
    return 0;
}
