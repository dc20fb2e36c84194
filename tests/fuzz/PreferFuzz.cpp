#include "base/Prefer.h"
#include "tests/fuzz/Fuzz.h"

#include <QDir>
#include <QFile>

namespace {
QByteArray loadAndSave(const QString& folder)
{
    Prefer pref(folder);
    pref.LoadPref();
    pref.SavePref();
    QFile file(folder + QStringLiteral("/Pref.tsp"));
    require(file.open(QIODevice::ReadOnly), "the file is there");
    return file.readAll();
}
/// A good record, with `patch` written over it from a place that its first two
/// bytes name: a run from scratch would hardly ever come to a valid file.
QByteArray patched(const QByteArray& patch)
{
    const auto at =
        static_cast<std::uint8_t>(patch.at(0)) * 256 + static_cast<std::uint8_t>(patch.at(1));
    return QByteArray("\xFF\xFF")
        .leftJustified(618)
        .replace(at % 619, patch.size() - 2, patch.sliced(2));
}
} // namespace

/// The first byte says whether the rest is a whole preferences file or a patch.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString folder = QDir::currentPath(); // one of the test's own
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const bool isPatch = input.size() > 2 && input.front() % 2 != 0;
    const QByteArray bytes =
        isPatch ? patched(input.sliced(1)) : input.sliced(input.isEmpty() ? 0 : 1);
    {
        QFile file(folder + QStringLiteral("/Pref.tsp"));
        require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(),
                "the folder can be written");
    }
    const QByteArray once = loadAndSave(folder);
    require(once.size() == 618 || once.size() == bytes.size(),
            "one record, or a longer file in full");
    const bool isGood =
        bytes.startsWith("\xFF\xFF") && bytes.size() >= 618 && bytes.at(414) != '\0';
    require(!isGood || (once.left(14) == bytes.left(14) && once.sliced(614) == bytes.sliced(614)),
            "numbers and foreign bytes are kept");
    // A zero byte behind leading blanks comes to the front of the mail client when
    // these are trimmed, and there it marks a broken file.
    require(once.at(414) == '\0' || loadAndSave(folder) == once, "what was saved loads the same");
    return 0;
}
