#include "base/Errors.h"

#include "base/SystemReason.h"

namespace {
/// The toolkit hands on the system's words, in whatever language these are.
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
