#include "bookmarks/ArchiveFiles.h"

#include "base/Errors.h"
#include "base/SafeFile.h"
#include "bookmarks/UnlistedFiles.h"

#include <algorithm>

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

Error folderNotRead(const Thema& folder, const QString& wanted)
{
    return Error(u"Der Ordner '"_s + oneLineText(folder.DirName()) +
                 u"' konnte nicht gelesen werden. Er kann erst "_s + wanted +
                 u" werden, wenn er wieder geladen ist."_s);
}
} // namespace

Book& ArchiveFiles::book()
{
    if (!m_book)
        m_book = std::make_unique<Book>(m_programFolder);
    return *m_book;
}

QString ArchiveFiles::load()
{
    QString kept;
    m_shown.reset();
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
        if (!hasFolders) // the default archive would take the names of what is there
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

void ArchiveFiles::checkReadable() const
{
    checkReadable(u"geändert"_s);
}

void ArchiveFiles::checkReadable(const Thema& folder)
{
    if (folder.refusesChanges())
        throw folderNotRead(folder, u"geändert"_s);
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

std::optional<QSize> archiveTreeSize(QSize scale, QPoint origin, int statusHeight)
{
    const int height = scale.height() - origin.y() - statusHeight;
    const int width = scale.width() - origin.x();
    if (height < 0 || width < 0)
        return std::nullopt;
    return QSize(width, height);
}
