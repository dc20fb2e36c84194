#include "bookmarks/ArchiveFiles.h"

#include "base/Errors.h"
#include "base/Maker.h"
#include "base/SafeFile.h"
#include "bookmarks/ArchiveRecords.h"
#include "bookmarks/DatedCopies.h"
#include "bookmarks/UnlistedFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
constexpr std::size_t faultsShown = 8;

QString joined(const QString& first, const QString& second)
{
    return first.isEmpty() || second.isEmpty() ? first + second : first + u"\n\n"_s + second;
}

QString keptText(const QStringList& names)
{
    if (names.isEmpty())
        return {};
    QString text = u"Das Verzeichnis des Archivs ('Book.bkm') fehlte, war leer oder "
                   "abgeschnitten. Was es nicht mehr nennt, ist aufgehoben als:\n"_s;
    for (const QString& name : names.first(std::min<qsizetype>(names.size(), faultsShown)))
        text += u"\n'"_s + name + u'\'';
    if (names.size() > qsizetype{faultsShown})
        text += u"\n... und %1 weitere"_s.arg(names.size() - qsizetype{faultsShown});
    return text;
}

bool isProtected(const QString& path)
{
    const QFileInfo file(path);
    return file.exists() && !file.isWritable();
}

Error folderNotRead(const Thema& folder, const QString& wanted)
{
    return Error(u"Der Ordner '"_s + oneLineText(folder.DirName()) +
                 u"' konnte nicht gelesen werden. Er kann erst "_s + wanted +
                 u" werden, wenn er wieder geladen ist."_s);
}

void add(BookmarkCollection& bookmarks, qint16 number, const QString& titel, const QString& url)
{
    auto bookmark = std::make_shared<Bookmark>();
    bookmark->Nr(number);
    bookmark->Titel(titel);
    bookmark->Url(url);
    bookmarks.Add(std::move(bookmark)); // two have the same number, so none has a key
}

/// Gives an archive without folders its first one, with three bookmarks, and saves both.
void createDefaultArchive(Book& book, const QString& programFolder)
{
    auto folder = std::make_shared<Thema>(programFolder);
    folder->Nr(1);
    folder->FileName(u"1.bkm"_s);
    folder->DirName(u"Info + Lizenzvertrag"_s);
    folder->Sequenz(1);

    auto bookmarks = std::make_shared<BookmarkCollection>();
    add(*bookmarks, 1, u"Tessera Software-Lizenzvertrag"_s, programFolder + u"\\lizenz.txt"_s);
    add(*bookmarks, 1, u"Downloadseite zur Tessera Software und Dokumentation"_s,
        maker::downloadPage());
    add(*bookmarks, 2, u"Die Website von Loomwork"_s, maker::webSite());
    folder->colBookmark(bookmarks);
    folder->SaveBookmarks();

    auto folders = std::make_shared<ThemaCollection>();
    folders->Add(folder, themaKey(folder->Nr()));
    book.colThema(folders);
    book.SaveAllThema();
}
} // namespace

Book& ArchiveFiles::book()
{
    if (!m_book) {
        m_book = std::make_unique<Book>(m_programFolder);
        m_book->beforeSaving([this] { copyArchive(); });
    }
    return *m_book;
}

QString ArchiveFiles::load()
{
    QString kept;
    m_shown.reset();
    m_protected.clear();
    m_loadFailed = true;
    try {
        const bool hasFolders = book().LoadAllThema();
        removeAbandonedFiles(m_programFolder);
        kept = keepUnlisted(hasFolders);
        if (!hasFolders) {
            createDefaultArchive(book(), m_programFolder);
            m_loadFailed = false;
            return joined(kept, unwritten());
        }
    } catch (const Error& error) {
        return faultText(u"Das Archiv konnte nicht gelesen werden und bleibt unverändert:"_s,
                         {{{}, m_programFolder + u"/Book.bkm"_s, error.text()}});
    }
    m_loadFailed = false;
    book().loadFolders();
    findProtected();
    removeOldBackups();
    m_shown = book().colThema();
    return joined(kept,
                  faultText(u"Diese Ordner konnten nicht gelesen werden und bleiben unverändert:"_s,
                            book().filesNotRead()));
}

QString ArchiveFiles::save()
{
    if (!book().IsEdit())
        return {};
    book().SaveAllThema();
    return unwritten();
}

QString ArchiveFiles::unwritten()
{
    book().markUnwrittenChanged();
    return faultText(u"Diese Dateien konnten nicht geschrieben werden:"_s,
                     book().filesNotWritten());
}

void ArchiveFiles::copyArchive()
{
    m_copyProblem =
        m_dataFolder.isEmpty()
            ? QString()
            : makeDatedCopy(m_programFolder, m_dataFolder + u"/archiv"_s, QDate::currentDate());
}

QString ArchiveFiles::takeCopyProblem()
{
    if (m_copyProblem.isEmpty() || std::exchange(m_copyProblemTold, true))
        return {};
    return u"Vom Archiv ließ sich vor der ersten Änderung von heute keine Sicherungskopie anlegen. "
           "Gespeichert wird trotzdem.\n\n"_s +
           m_copyProblem;
}

bool ArchiveFiles::isChanged()
{
    if (book().IsEdit())
        return true;
    if (const auto folders = book().colThema())
        for (const auto& folder : *folders)
            if (folder->IsEdit())
                return true;
    return false;
}

QSet<QString> ArchiveFiles::listedFiles(bool hasFolders)
{
    QSet<QString> names;
    if (hasFolders)
        for (const auto& folder : *book().colThema())
            names << folder->FileName();
    return names;
}

QString ArchiveFiles::keepUnlisted(bool hasFolders)
{
    try {
        return keptText(keepUnlistedFiles(m_programFolder, listedFiles(hasFolders)));
    } catch (const FileError& error) {
        if (!hasFolders) // the default archive would overwrite the files that are there
            throw;
        return error.text();
    }
}

void ArchiveFiles::checkReadable(const QString& wanted) const
{
    if (m_loadFailed)
        throw Error(u"Das Archiv konnte nicht gelesen werden. Es kann erst "_s + wanted +
                    u" werden, wenn es wieder geladen ist."_s);
}

void ArchiveFiles::findProtected()
{
    for (const QString& path : {m_programFolder, m_programFolder + u"/Book.bkm"_s})
        if (isProtected(path))
            m_protected = path;
    for (const auto& folder : *book().colThema())
        folder->isWriteProtected(isWriteProtected() ||
                                 isProtected(m_programFolder + u'/' + folder->FileName()));
}

void ArchiveFiles::removeOldBackups()
{
    const QDir folder(m_programFolder);
    const QStringList backups = folder.entryList({u"*.bkm.bak"_s}, QDir::Files);
    if (backups.isEmpty() || isWriteProtected())
        return;
    QSet<QString> read{u"Book.bkm"_s};
    for (const auto& thema : *book().colThema())
        if (!thema->refusesChanges())
            read << thema->FileName();
    for (const QString& backup : backups) {
        const QString name = backup.chopped(4);
        // Beside a file without content it may be all that there is.
        if (read.contains(name) && QFileInfo(folder, name).size() > 0)
            QFile::remove(folder.filePath(backup));
    }
}

void ArchiveFiles::checkReadable() const
{
    checkReadable(u"geändert"_s);
    if (isWriteProtected())
        throw Error(u"Das Archiv ist schreibgeschützt und lässt sich nur ansehen: '"_s +
                    oneLineText(m_protected) + u"' darf nicht geändert werden."_s);
}

void ArchiveFiles::checkReadable(const Thema& folder)
{
    if (folder.refusesChanges())
        throw folderNotRead(folder, u"geändert"_s);
    if (folder.isWriteProtected())
        throw Error(u"Der Ordner '"_s + oneLineText(folder.DirName()) +
                    u"' ist schreibgeschützt und lässt sich nur ansehen: Seine Datei '"_s +
                    oneLineText(folder.FileName()) +
                    u"' oder das ganze Archiv darf nicht geändert werden."_s);
}

void ArchiveFiles::checkExportable(const Thema* folder)
{
    const QString wanted = u"exportiert"_s;
    checkReadable(wanted);
    if (!book().colThema())
        return;
    for (const auto& one : *book().colThema())
        if ((folder == nullptr || one.get() == folder) && one->refusesChanges())
            throw folderNotRead(*one, wanted);
}

QString faultText(const QString& heading, const std::vector<ArchiveFault>& faults)
{
    if (faults.empty())
        return {};
    QString text = heading;
    for (std::size_t i = 0; i < faults.size(); ++i) {
        if (i == faultsShown) {
            text += u"\n... und %1 weitere"_s.arg(faults.size() - i);
            break;
        }
        const ArchiveFault& fault = faults[i];
        text += u"\n\n'"_s + oneLineText(fault.fileName) + u'\'';
        if (!fault.dirName.isEmpty())
            text += u" (Ordner '"_s + oneLineText(fault.dirName) + u"')"_s;
        text += u":\n"_s + fault.reason;
    }
    return text;
}
