#include "bookmarks/Book.h"

#include "base/Errors.h"
#include "base/SafeFile.h"
#include "base/WholeNumber.h"
#include "bookmarks/ArchiveRecords.h"

#include <algorithm>

namespace {
QString indexName()
{
    return QStringLiteral("Book.bkm");
}

void emptyFolder(Thema& folder)
{
    if (const auto bookmarks = folder.colBookmark()) {
        while (!bookmarks->IsEmpty())
            bookmarks->Remove(bookmarks->Count());
        folder.colBookmark(nullptr);
    }
}
} // namespace

void Book::DeleteThema(qint16 index)
{
    if (!m_colThema)
        throw NotFoundError(QString::number(index));
    const std::shared_ptr<Thema> folder = m_colThema->Item(index);
    prepareSaving();
    emptyFolder(*folder);
    // The bare name on purpose: the file is removed only where the program runs in its
    // own folder.
    if (Thema::isFileName(folder->FileName()) && !folder->refusesChanges())
        ignoringErrors([&folder] { removeFile(folder->FileName()); });
    m_colThema->Remove(index);
    SaveAllThema();
}

qint32 Book::GetNewKey()
{
    SequenzMax(addWhole(SequenzMax(), 1));
    return SequenzMax();
}

void Book::SaveAllThema()
{
    m_saveError = m_loadError;
    if (m_loadError.isEmpty()) {
        prepareSaving();
        // The index comes last, so that it never lists a file that is not written yet.
        saveFolders();
        try {
            writeIndex();
        } catch (const Error& error) {
            m_saveError = error.text();
        }
    }
    m_isEdit = false;
}

bool Book::LoadAllThema()
{
    try {
        auto folders = std::make_shared<ThemaCollection>();
        readIndex(*folders);
        m_itCounter = toInt16(folders->Count());
        m_loadError.clear();
        if (folders->IsEmpty())
            return false;
        m_colThema = std::move(folders);
        return true;
    } catch (const Error& error) {
        m_loadError = error.text();
        throw;
    }
}

void Book::loadFolders()
{
    if (m_colThema)
        for (const auto& folder : *m_colThema)
            ignoringErrors([&folder] { folder->LoadBookmarks(); });
}

std::vector<ArchiveFault> Book::filesNotRead() const
{
    std::vector<ArchiveFault> faults;
    if (m_colThema)
        for (const auto& folder : *m_colThema)
            if (!folder->loadError().isEmpty())
                faults.push_back({folder->DirName(), folder->FileName(), folder->loadError()});
    return faults;
}

std::vector<ArchiveFault> Book::filesNotWritten() const
{
    std::vector<ArchiveFault> faults;
    if (!m_saveError.isEmpty())
        faults.push_back({{}, indexName(), m_saveError});
    if (m_colThema)
        for (const auto& folder : *m_colThema)
            if (!folder->saveError().isEmpty())
                faults.push_back({folder->DirName(), folder->FileName(), folder->saveError()});
    return faults;
}

void Book::markUnwrittenChanged()
{
    if (filesNotWritten().empty())
        return;
    m_isEdit = true;
    if (m_colThema)
        for (const auto& folder : *m_colThema)
            if (!folder->saveError().isEmpty())
                folder->IsEdit(true);
}

void Book::prepareSaving() const
{
    if (m_beforeSaving)
        m_beforeSaving();
}

void Book::saveFolders()
{
    if (!m_colThema)
        return;
    FileReplacer files;
    for (const auto& folder : *m_colThema)
        if (folder->IsEdit())
            folder->SaveBookmarks(files);
    files.finish();
}

void Book::readIndex(ThemaCollection& folders)
{
    const auto records = readThemaRecords(readOrCreateFile(indexPath(), indexFileLimit));
    folders.reserve(static_cast<int>(records.size()));
    for (const ThemaRec& record : records) {
        auto folder = std::make_shared<Thema>(m_programFolder);
        folder->Nr(record.number);
        folder->FileName(record.fileName);
        folder->DirName(record.dirName);
        folder->IsEdit(false); // only after the name, which marks the folder changed
        folder->Sequenz(record.sequenz);
        SequenzMax(std::max(SequenzMax(), record.sequenz));
        folders.Add(std::move(folder), themaKey(record.number));
    }
}

void Book::writeIndex() const
{
    std::vector<ThemaRec> records;
    qint32 number = 0;
    if (m_colThema)
        for (const auto& folder : *m_colThema)
            records.push_back({folder->Sequenz(), ++number, folder->DirName(), folder->FileName()});
    replaceFile(indexPath(), writeThemaRecords(records));
}

QString Book::indexPath() const
{
    return m_programFolder + u'/' + indexName();
}
