#include "bookmarks/Thema.h"

#include "base/SafeFile.h"
#include "base/WholeNumber.h"
#include "bookmarks/ArchiveRecords.h"

#include <algorithm>

using namespace Qt::StringLiterals;

qint16 Thema::GetNewKey()
{
    m_itCounter = addWhole(m_itCounter, 1);
    return m_itCounter;
}

void Thema::SaveBookmarks()
{
    FileReplacer files;
    SaveBookmarks(files);
    files.finish();
}

void Thema::SaveBookmarks(FileReplacer& files)
{
    m_saveError = m_loadError;
    try {
        checkFileName();
        if (refusesChanges()) {
            // A file that could not be read is not overwritten.
        } else if (!m_colBookmark || !IsEdit()) {
            removeFile(filePath());
        } else {
            files.replace(filePath(), writeBookmarks(*m_colBookmark),
                          [this](const FileError& error) { m_saveError = error.text(); });
        }
    } catch (const Error& error) {
        m_saveError = error.text();
    }
    m_isEdit = false;
}

void Thema::LoadBookmarks()
{
    try {
        checkFileName();
        const QByteArray bytes = readOrCreateFile(filePath(), bookmarkFileLimit);
        auto bookmarks = readBookmarks(bytes, m_nr);
        m_itCounter = toInt16(bookmarks->Count());
        if (!bookmarks->IsEmpty())
            m_colBookmark = std::move(bookmarks);
        m_loadError.clear();
    } catch (const Error& error) {
        m_loadError = error.text();
        throw;
    }
}

bool Thema::holds(const QString& url) const
{
    return m_colBookmark &&
           std::any_of(m_colBookmark->begin(), m_colBookmark->end(),
                       [&url](const auto& bookmark) { return bookmark->Url() == url; });
}

void Thema::DirName(const QString& value)
{
    m_dirName = value;
    m_isEdit = true;
}

void Thema::Nr(qint32 value)
{
    m_nr = toInt16(value);
}

bool Thema::isFileName(QStringView name)
{
    return !name.isEmpty() && !name.contains(u'/') && !name.contains(u'\\') &&
           !name.contains(u".."_s) && !name.contains(QChar(0)) && name != u"Book.bkm"_s;
}

void Thema::checkFileName() const
{
    if (!isFileName(m_fileName))
        throw FileError(m_fileName, u"Der Dateiname ist nicht zulässig."_s);
}

QString Thema::filePath() const
{
    return m_programFolder + u'/' + m_fileName;
}
