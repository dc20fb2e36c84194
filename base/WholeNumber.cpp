#include "base/WholeNumber.h"

#include <QRegularExpression>

#include <cmath>
#include <limits>

qint16 parseInt16(QStringView text)
{
    static const QRegularExpression number(
        QStringLiteral("\\A\\s*([+-]?[0-9]+)(?:,([0-9]*))?\\s*\\z"));
    const QString whole = text.toString();
    const auto match = number.match(whole);
    if (!match.hasMatch())
        throw ConversionError(whole);
    // Doubles hold every number near the 16-bit range exactly; longer ones
    // only have to be recognised as too large.
    const double value =
        (match.captured(1) + QLatin1Char('.') + match.captured(2) + QLatin1Char('0')).toDouble();
    const double nearest = std::nearbyint(value);
    if (!(nearest >= std::numeric_limits<qint16>::min()) ||
        !(nearest <= std::numeric_limits<qint16>::max()))
        throw OverflowError(value < 0);
    return static_cast<qint16>(nearest);
}
