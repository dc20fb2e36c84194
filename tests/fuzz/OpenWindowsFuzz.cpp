#include "app/OpenWindows.h"
#include "tests/fuzz/Fuzz.h"

/// The bytes are the file that a run has left.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto open = openWindowsFromBytes(bytes);
    if (!open)
        return 0;
    require(open->active >= -1 && open->active < open->windows.size(), "the active one is there");
    require(openWindowsFromBytes(openWindowsToBytes(*open)) == open, "what was read is written");
    return 0;
}
