#include "bookmarks/UnlistedFiles.h"

#include "base/Errors.h"
#include "base/SafeFile.h"
#include "bookmarks/ArchiveRecords.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
QString freeName(const QString& path)
{
    const QString kept = path + u".alt"_s;
    QString free = kept;
    for (int n = 2; QFileInfo::exists(free); ++n)
        free = kept + QString::number(n);
    return free;
}

bool hasContent(const QString& path)
{
    const QFileInfo file(path);
    return file.isFile() && file.size() > 0;
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(indexFileLimit) : QByteArray();
}

void keepFolderFile(const QString& path, QStringList& kept)
{
    takeBackupBack(path);
    if (!hasContent(path))
        return;
    QFile file(path);
    if (!file.rename(freeName(path)))
        throw FileError(path, file.errorString());
    kept << QFileInfo(file).fileName();
}

/// Copies an index that ends within a record: loading reads its whole records only, and the
/// next save would lose the rest.
void keepCutIndex(const QString& path, QStringList& kept)
{
    if (!hasContent(path) || QFileInfo(path).size() % themaRecordSize == 0)
        return;
    QFile file(path);
    const QString copy = freeName(path);
    // The cut index stays in its place until the next save. When it is loaded once more,
    // the copy of the first time is enough.
    for (const QString& before : QDir(QFileInfo(path).path()).entryList({u"Book.bkm.alt*"_s}))
        if (contentOf(QFileInfo(path).path() + u'/' + before) == contentOf(path))
            return;
    if (!file.copy(copy))
        throw FileError(path, file.errorString());
    kept << QFileInfo(copy).fileName();
}
} // namespace

QStringList keepUnlistedFiles(const QString& programFolder, const QSet<QString>& listed)
{
    static const QRegularExpression folderFile(u"^[0-9]+\\.bkm(?=(\\.bak)?$)"_s);
    QStringList kept;
    keepCutIndex(programFolder + u"/Book.bkm"_s, kept);
    if (!listed.isEmpty() && kept.isEmpty())
        return {};
    const QStringList names = QDir(programFolder).entryList(QDir::Files);
    for (const QString& name : names) {
        const auto match = folderFile.match(name);
        if (match.hasMatch() && !listed.contains(match.captured()))
            keepFolderFile(programFolder + u'/' + match.captured(), kept);
    }
    return kept;
}
