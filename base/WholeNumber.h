#pragma once

#include "base/Errors.h"

#include <QStringView>
#include <QtGlobal>

#include <limits>

/// Whole numbers of 16 and 32 bits that never wrap: what does not fit throws
/// OverflowError.
template <typename Int>
Int toWhole(qint64 value)
{
    if (value < std::numeric_limits<Int>::min() || value > std::numeric_limits<Int>::max())
        throw OverflowError(value < 0);
    return static_cast<Int>(value);
}

inline qint16 toInt16(qint64 value)
{
    return toWhole<qint16>(value);
}
inline qint32 toInt32(qint64 value)
{
    return toWhole<qint32>(value);
}

/// The sum in the type of the first operand.
template <typename Int>
Int addWhole(Int value, qint64 step)
{
    return toWhole<Int>(qint64{value} + step);
}

/// A Boolean as the files and 16-bit properties hold it: true -1, false 0.
constexpr qint16 toFlag(bool value)
{
    return value ? qint16{-1} : qint16{0};
}

/// The number that `text` holds: an optional sign and digits, blanks around
/// them allowed; a decimal comma rounds to the nearest whole number, halves to
/// even. Throws ConversionError for anything else, OverflowError past 16 bits.
qint16 parseInt16(QStringView text);
