#include "bookmarks/ArchiveFiles.h"

#include "base/Errors.h"
#include "bookmarks/DefaultArchive.h"

using namespace Qt::StringLiterals;

namespace {
constexpr std::size_t faultsShown = 8;
} // namespace

Book& ArchiveFiles::book()
{
    if (!m_book)
        m_book = std::make_unique<Book>(m_programFolder);
    return *m_book;
}

QString ArchiveFiles::load()
{
    m_shown.reset();
    m_loadFailed = true;
    try {
        if (!book().LoadAllThema()) {
            createDefaultArchive(book(), m_programFolder);
            m_loadFailed = false;
            return unwritten();
        }
    } catch (const Error& error) {
        return faultText(u"Das Archiv konnte nicht gelesen werden und bleibt unverändert:"_s,
                         {{{}, m_programFolder + u"/Book.bkm"_s, error.text()}});
    }
    m_loadFailed = false;
    book().loadFolders();
    m_shown = book().colThema();
    return faultText(u"Diese Ordner konnten nicht gelesen werden und bleiben unverändert:"_s,
                     book().filesNotRead());
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

void ArchiveFiles::checkReadable() const
{
    if (m_loadFailed)
        throw Error(u"Das Archiv konnte nicht gelesen werden. Es kann erst geändert werden, "
                    "wenn es wieder geladen ist."_s);
}

void ArchiveFiles::checkReadable(const Thema& folder)
{
    if (folder.refusesChanges())
        throw Error(u"Der Ordner '"_s + folder.DirName() +
                    u"' konnte nicht gelesen werden. Er kann erst geändert werden, "
                    "wenn er wieder geladen ist."_s);
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
        text += u"\n\n'"_s + fault.fileName + u'\'';
        if (!fault.dirName.isEmpty())
            text += u" (Ordner '"_s + fault.dirName + u"')"_s;
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
