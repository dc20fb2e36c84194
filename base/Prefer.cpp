#include "base/Prefer.h"

#include "base/Errors.h"
#include "base/RecordField.h"
#include "base/WholeNumber.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>

namespace {
constexpr qsizetype recordSize = 618;
constexpr qsizetype textWidth = 200;
constexpr qsizetype mailClientOffset = 414;
constexpr qint16 validMark = -1;

/// Opens a file for reading without waiting for the other end of a pipe.
bool openAtOnce(QFile& file)
{
    const int handle =
        ::open(QFile::encodeName(file.fileName()).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    return handle >= 0 && file.open(handle, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
}

/// The beginning of the file, without waiting; nothing of a missing one, or of a pipe.
/// Throws FileError.
QByteArray beginningOf(const QString& path, qint64 count)
{
    QFile file(path);
    if (!openAtOnce(file)) {
        const int reason = errno;
        if (reason == ENOENT)
            return {};
        throw FileError(path, qt_error_string(reason));
    }
    if (file.isSequential())
        return {};
    QByteArray bytes = file.read(count);
    if (file.error() != QFileDevice::NoError)
        throw FileError(path, file.errorString());
    return bytes;
}

/// The text that a load gives back where `text` was saved: cut to the width of the field, and
/// with "?" for what the encoding does not have.
QString asStored(const QString& text)
{
    const QByteArray field = RecordWriter(textWidth).text(text, textWidth).bytes();
    return RecordReader(field).text(textWidth);
}

QString filePath(const QString& programFolder)
{
    return programFolder + QStringLiteral("/Pref.tsp");
}

/// A record that was written whole has no zero byte where the mail client begins, as the
/// field is padded with blanks.
bool isBroken(const QByteArray& record)
{
    return RecordReader(record).int16() != validMark || record.size() <= mailClientOffset ||
           record.at(mailClientOffset) == '\0';
}
} // namespace

Prefer::Prefer(const QString& programFolder) : m_programFolder(programFolder) {}

QString Prefer::defaultHomeUrl(const QString& programFolder)
{
    return programFolder + QStringLiteral("\\Lizenz.txt");
}

QString Prefer::defaultSearchEngine()
{
    return QStringLiteral("https://duckduckgo.com/");
}

void Prefer::SavePref()
{
    // Opened for reading too, so that the file is not truncated: bytes behind
    // the record belong to whoever wrote them.
    QFile file(filePath(m_programFolder));
    if (m_isUnread)
        throw FileError(file.fileName(), QStringLiteral("Sie konnte beim Start nicht gelesen "
                                                        "werden und bleibt, wie sie ist."));
    if (!file.open(QIODevice::ReadWrite))
        throw FileError(file.fileName(), file.errorString());
    if (file.isSequential())
        throw FileError(file.fileName(), QStringLiteral("Es ist keine gewöhnliche Datei."));
    const QByteArray bytes = record();
    if (file.write(bytes) != bytes.size() || !file.flush())
        throw FileError(file.fileName(), file.errorString());
}

void Prefer::LoadPref()
{
    takeDefaults();
    m_isUnread = true; // and stays so if the next line throws
    const QByteArray bytes = beginningOf(filePath(m_programFolder), recordSize);
    m_isUnread = false;
    if (!isBroken(bytes)) {
        takeRecord(bytes);
        return;
    }
    QFile::remove(filePath(m_programFolder));
    ignoringErrors([this] { SavePref(); });
}

QByteArray Prefer::record() const
{
    return RecordWriter(recordSize)
        .int16(validMark)
        .int16(m_startBrowser)
        .int16(m_historyRows)
        .int16(m_mdiWidth)
        .int16(m_mdiHeight)
        .int16(m_mdiState)
        .int16(m_statusBar)
        .text(m_homeUrl, textWidth)
        .text(m_searchEngine, textWidth)
        .text(m_mailClient, textWidth)
        .int16(m_toolbar)
        .int16(m_adresszeile)
        .bytes();
}

void Prefer::takeRecord(const QByteArray& bytes)
{
    RecordReader reader(bytes);
    reader.int16(); // the validity mark
    m_startBrowser = reader.int16();
    m_historyRows = reader.int16();
    m_mdiWidth = reader.int16();
    m_mdiHeight = reader.int16();
    m_mdiState = reader.int16();
    m_statusBar = reader.int16();
    m_homeUrl = reader.text(textWidth);
    // The default start page lies in the program folder, whose path may be too long for the
    // field, or have letters that the encoding does not. What was stored stands for it.
    if (const QString home = defaultHomeUrl(m_programFolder); m_homeUrl == asStored(home))
        m_homeUrl = home;
    m_searchEngine = reader.text(textWidth);
    m_mailClient = reader.text(textWidth);
    m_toolbar = reader.int16();
    m_adresszeile = reader.int16();
}

void Prefer::takeDefaults()
{
    m_homeUrl = defaultHomeUrl(m_programFolder);
    m_searchEngine = defaultSearchEngine();
    m_historyRows = defaultHistoryRows;
    m_mdiHeight = 7200;
    m_mdiWidth = 9600;
    m_mdiState = 0;
    m_statusBar = 1;
    m_adresszeile = toFlag(true);
    m_toolbar = toFlag(true);
    m_mailClient.clear();
    StartBrowser(toFlag(true));
}
