#pragma once

#include <limits>

/// Sizes of windows are kept in twips (1/1440 inch), with a fixed factor to
/// device-independent pixels.
constexpr int twipsPerPixel = 15;

constexpr int toTwips(int pixels)
{
    return pixels * twipsPerPixel;
}
constexpr int toPixels(int twips)
{
    return twips / twipsPerPixel;
}

/// A size in pixels as the preferences hold it: twips in 16 bits. A window
/// larger than that counts as the largest that fits.
constexpr short toStoredTwips(int pixels)
{
    constexpr int most = std::numeric_limits<short>::max();
    return static_cast<short>(pixels > most / twipsPerPixel ? most : toTwips(pixels));
}
