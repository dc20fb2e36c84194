#pragma once

#include "base/ShownText.h"

#include <QByteArray>
#include <QString>

#include <exception>
#include <utility>

/// The failures that core code reports. Each carries a short German text that
/// can be shown to the user as it stands.
class Error : public std::exception {
public:
    explicit Error(const QString& text) : m_text(text), m_bytes(text.toUtf8()) {}

    const QString& text() const { return m_text; }
    const char* what() const noexcept override { return m_bytes.constData(); }

private:
    QString m_text;
    QByteArray m_bytes;
};

/// A whole number left the range of its 16- or 32-bit type.
class OverflowError : public Error {
public:
    explicit OverflowError(bool isBelow = false)
        : Error(isBelow ? QStringLiteral("Überlauf: Die Zahl ist zu klein.")
                        : QStringLiteral("Überlauf: Die Zahl ist zu groß."))
    {
    }
};

/// A text that should be a number is none.
class ConversionError : public Error {
public:
    explicit ConversionError(const QString& value)
        : Error(QStringLiteral("'%1' ist keine Zahl.").arg(oneLineText(value)))
    {
    }
};

/// A key is in the collection already.
class DuplicateKeyError : public Error {
public:
    explicit DuplicateKeyError(const QString& key)
        : Error(QStringLiteral("Der Schlüssel '%1' ist bereits vergeben.").arg(oneLineText(key)))
    {
    }
};

/// A position or key that the collection does not hold.
class NotFoundError : public Error {
public:
    explicit NotFoundError(const QString& which)
        : Error(QStringLiteral("Das Element '%1' ist nicht vorhanden.").arg(oneLineText(which)))
    {
    }
};

/// A file could not be opened, read, written or removed.
class FileError : public Error {
public:
    /// `reason` is the system's own description, as QFileDevice::errorString() gives it;
    /// the text says the common ones in German.
    FileError(const QString& path, const QString& reason);

    const QString& path() const { return m_path; }

private:
    QString m_path;
};

/// Runs `command` at the edge of the program, where no exception may leave a
/// slot or an event handler: `report` gets the text of an error, and the program
/// stays as it is. Returns whether the command went through.
template <typename Command, typename Report>
bool runReporting(Command&& command, Report&& report)
{
    try {
        std::forward<Command>(command)();
        return true;
    } catch (const Error& error) {
        report(error.text());
    } catch (const std::exception& error) {
        report(QString::fromUtf8(error.what()));
    }
    return false;
}

/// Runs one statement of a handler that ignores errors statement by statement,
/// so that a failure skips just this statement.
template <typename Statement>
void ignoringErrors(Statement&& statement) noexcept
{
    try {
        std::forward<Statement>(statement)();
    } catch (...) { // the handler goes on with its next statement
    }
}
