#include "base/RecordField.h"
#include "tests/fuzz/Fuzz.h"

namespace {
/// Reads `record` field after field, as `plan` says, and writes the same fields.
QByteArray readAndWrite(QByteArrayView plan, QByteArrayView record)
{
    RecordReader reader(record);
    RecordWriter writer(record.size());
    for (const char step : plan) {
        const auto number = static_cast<std::uint8_t>(step);
        if (number % 4 == 0)
            writer.int16(reader.int16());
        else if (number % 4 == 1)
            writer.int32(reader.int32());
        else
            writer.text(reader.text(number), number);
    }
    return writer.bytes();
}
} // namespace

/// The first byte is the number of fields, that many bytes say of what kind they
/// are, and the rest is the record.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView all(data, static_cast<qsizetype>(size));
    if (all.isEmpty())
        return 0;
    const qsizetype fields = std::min<qsizetype>(data[0], all.size() - 1);
    const QByteArrayView plan = all.sliced(1, fields);
    const QByteArray once = readAndWrite(plan, all.sliced(1 + fields));
    require(readAndWrite(plan, once) == once, "what was written reads the same");
    return 0;
}
