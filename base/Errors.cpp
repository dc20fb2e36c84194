#include "base/Errors.h"

#include "base/SystemReason.h"

namespace {
/// Qt passes the system's description on in the language of the user's locale. Where it is
/// the description of an error number, the German one takes its place.
QString inGerman(const QString& reason)
{
    constexpr int lastCode = 133; // of Linux
    for (int code = 1; code <= lastCode; ++code)
        if (reason == qt_error_string(code))
            return QString::fromStdString(systemReason(code));
    return reason;
}
} // namespace

FileError::FileError(const QString& path, const QString& reason)
    : Error(QStringLiteral("Die Datei '%1' ist nicht zugänglich: %2")
                .arg(oneLineText(path), inGerman(reason))),
      m_path(path)
{
}
