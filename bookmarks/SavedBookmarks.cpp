#include "bookmarks/SavedBookmarks.h"

#include "base/Errors.h"
#include "bookmarks/ArchiveRecords.h"
#include "bookmarks/Thema.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
QString indexOf(const QString& programFolder)
{
    return programFolder + u"/Book.bkm"_s;
}

QByteArray contentOf(const QString& path, qint64 limit)
{
    QFile file(path);
    // A pipe of that name would hold the reader up.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    return file.read(limit);
}
} // namespace

std::vector<SavedBookmark> savedBookmarks(const QString& programFolder)
{
    std::vector<SavedBookmark> all;
    ignoringErrors([&] {
        const QByteArray index = contentOf(indexOf(programFolder), indexFileLimit);
        for (const ThemaRec& folder : readThemaRecords(index)) {
            if (!Thema::isFileName(folder.fileName))
                continue;
            const QString path = programFolder + u'/' + folder.fileName;
            const QByteArray bytes = contentOf(path, bookmarkFileLimit);
            ignoringErrors([&] {
                const auto bookmarks = readBookmarks(bytes, folder.number);
                for (const auto& bookmark : *bookmarks)
                    all.push_back({bookmark->Titel(), bookmark->Url()});
            });
        }
    });
    return all;
}

QDateTime archiveSaved(const QString& programFolder)
{
    // Every save writes the index, and writes it last.
    return QFileInfo(indexOf(programFolder)).lastModified();
}
