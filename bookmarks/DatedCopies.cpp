#include "bookmarks/DatedCopies.h"

#include "base/Errors.h"
#include "base/SafeFile.h"
#include "bookmarks/ArchiveRecords.h"
#include "bookmarks/Thema.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr auto forOwner = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
const QString unfinished = u".neu"_s; // behind a day: not a whole copy

/// What the file holds, or its ".bak" where a save has failed; nothing where there is neither.
std::optional<QByteArray> contentOf(const QString& path)
{
    for (const QString& name : {path, path + u".bak"_s}) {
        if (!QFileInfo(name).isFile())
            continue;
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly))
            throw FileError(name, file.errorString());
        QByteArray bytes = file.readAll();
        if (file.error() != QFileDevice::NoError)
            throw FileError(name, file.errorString());
        return bytes;
    }
    return {};
}

void makeFolder(const QString& path)
{
    if (!QDir().mkpath(path) || !QFile::setPermissions(path, forOwner))
        throw FileError(path, u"Der Ordner lässt sich nicht anlegen."_s);
}

/// Copies the index, and the files that it names.
void copyArchive(const QString& from, const QByteArray& index, const QString& to)
{
    QStringList names;
    std::optional<FileError> failure;
    FileReplacer files;
    const auto copy = [&](const QString& name, const QByteArray& bytes) {
        names << name;
        files.replace(to + u'/' + name, bytes, [&](const FileError& error) { failure = error; });
    };
    copy(u"Book.bkm"_s, index);
    for (const ThemaRec& folder : readThemaRecords(index))
        if (const QString& name = folder.fileName; Thema::isFileName(name) && !failure)
            if (const auto bytes = contentOf(from + u'/' + name))
                copy(name, *bytes);
    files.finish();
    if (failure)
        throw FileError(*failure);
    for (const QString& name : names)
        QFile::setPermissions(to + u'/' + name, QFile::ReadOwner);
}

/// Takes the name of a copy away before its files.
void remove(const QDir& copies, const QString& day)
{
    if (QDir().rename(copies.filePath(day), copies.filePath(day + unfinished)))
        QDir(copies.filePath(day + unfinished)).removeRecursively();
}

void removeOld(const QDir& copies, const QString& today)
{
    static const QRegularExpression aDay(u"\\A\\d{4}-\\d\\d-\\d\\d\\z"_s);
    constexpr qsizetype kept = 10;
    QStringList days = copies.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name).filter(aDay);
    // Where the clock has been put back, those of days to come are older than today's.
    std::stable_partition(days.begin(), days.end(),
                          [&today](const QString& day) { return day > today; });
    for (const QString& day : days.first(std::max(days.size() - kept, qsizetype{0})))
        remove(copies, day);
}

void removeUnfinished(const QDir& copies)
{
    static const QRegularExpression ours(u"\\A\\d{4}-\\d\\d-\\d\\d\\.neu\\z"_s);
    const QStringList begun = copies.entryList(QDir::Dirs | QDir::NoDotAndDotDot).filter(ours);
    for (const QString& name : begun)
        QDir(copies.filePath(name)).removeRecursively();
}

} // namespace

QString makeDatedCopy(const QString& programFolder, const QString& copiesFolder, QDate today)
{
    const QDir copies(copiesFolder);
    const QString day = today.toString(Qt::ISODate);
    if (copies.exists(day))
        return {};
    const QString begun = copies.filePath(day + unfinished);
    try {
        const auto index = contentOf(programFolder + u"/Book.bkm"_s);
        if (!index || index->isEmpty())
            return {};
        makeFolder(copiesFolder);
        removeUnfinished(copies);
        makeFolder(begun);
        copyArchive(programFolder, *index, begun);
        if (!QDir().rename(begun, copies.filePath(day)))
            throw FileError(begun, u"Der Ordner lässt sich nicht umbenennen."_s);
        removeOld(copies, day);
    } catch (const Error& error) {
        QDir(begun).removeRecursively();
        return error.text();
    }
    return {};
}
