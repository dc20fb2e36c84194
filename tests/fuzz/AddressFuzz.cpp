#include "address/AddressResolver.h"
#include "tests/core/FakeFileTable.h"
#include "tests/fuzz/Fuzz.h"

using namespace Qt::StringLiterals;

namespace {
void resolveOne(const QString& typed)
{
    const QUrl url = resolveAddress(typed, disk(), drives());
    require(url.isValid() != url.isEmpty(), "valid, or nothing at all");
    require(url.isEmpty() || url.scheme().size() > 1, "a drive letter is no scheme");
    require((url.scheme() != "http"_L1 && url.scheme() != "https"_L1) || !url.host().isEmpty(),
            "a web address has a host");
    // What the engine reports as its location comes back from the history. Only a
    // missing file whose path looks like a drive, and a host that is called like a
    // folder below the root, may turn into something else.
    const QString location = url.toString(QUrl::FullyEncoded);
    const bool isFile = url.scheme() == "file"_L1;
    if (!isFile || (url.host().isEmpty() && location.mid(9, 1) != u':'))
        require(resolveAddress(location, disk(), drives()).toString(QUrl::FullyEncoded) == location,
                "a resolved address resolves to itself");
}
} // namespace

/// The bytes are an address, once as UTF-8 and once as code units.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView bytes(data, static_cast<qsizetype>(size));
    resolveOne(QString::fromUtf8(bytes));
    QString units;
    for (qsizetype i = 0; i + 1 < bytes.size(); i += 2)
        units += QChar(data[i], data[i + 1]);
    resolveOne(units);
    return 0;
}
