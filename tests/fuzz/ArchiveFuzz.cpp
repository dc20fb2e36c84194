#include "base/Errors.h"
#include "bookmarks/ArchiveRecords.h"

#include <cstdint>
#include <cstdlib>

namespace {
void check(bool holds)
{
    if (!holds)
        std::abort();
}

/// What was read can be written, and reads the same; only the numbers are new.
void readFolder(QByteArrayView bytes)
{
    const auto first = readBookmarks(bytes, 7);
    check(first->Count() == bytes.size() / bookmarkRecordSize);
    const auto second = readBookmarks(writeBookmarks(*first), 7);
    check(second->Count() == first->Count());
    for (int i = 1; i <= first->Count(); ++i) {
        check(second->Item(i)->Nr() == i);
        check(second->Item(i)->Titel() == first->Item(i)->Titel());
        check(second->Item(i)->Url() == first->Item(i)->Url());
        check(second->Item(i)->Info() == first->Item(i)->Info());
    }
}

void readIndex(QByteArrayView bytes)
{
    const auto first = readThemaRecords(bytes);
    const auto second = readThemaRecords(writeThemaRecords(first));
    check(second.size() == first.size());
    for (std::size_t i = 0; i < first.size(); ++i) {
        check(second[i].sequenz == first[i].sequenz && second[i].number == first[i].number);
        check(second[i].dirName == first[i].dirName && second[i].fileName == first[i].fileName);
    }
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
