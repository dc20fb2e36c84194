#include "bookmarks/ArchiveExport.h"

#include "base/Prompt.h"
#include "base/RunCommand.h"
#include "base/SafeFile.h"
#include "bookmarks/ArchiveFiles.h"
#include "bookmarks/ExportFormats.h"

using namespace Qt::StringLiterals;

namespace {
ExportTime thisMoment()
{
    // The name of the month is in the user's language; the program's own locale is German.
    return {QDateTime::currentDateTime(), QLocale::system()};
}

QString titleFor(const QString& kind)
{
    if (kind == u"Text"_s)
        return u" exportieren in Text Datei..."_s;
    if (kind == u"Netscape"_s)
        return u" exportieren in Netscape Bookmark Dateiformat"_s;
    return u" exportieren in HTML Datei..."_s;
}
} // namespace

void ArchiveExport::ExportFolder(const QString& kind, const std::shared_ptr<Thema>& folder)
{
    m_files.checkExportable(folder.get());
    if (!folder)
        return;
    exportTo(u"Ordner"_s + titleFor(kind), kind, [&kind, &folder] {
        if (kind == u"Text"_s)
            return exportFolderText(*folder);
        if (kind == u"Netscape"_s)
            return exportFolderNetscape(*folder, thisMoment());
        return exportFolderHtml(*folder);
    });
}

void ArchiveExport::ExportArchive(const QString& kind)
{
    m_files.checkExportable(nullptr);
    exportTo(u"Archiv"_s + titleFor(kind), kind, [&kind, &book = m_files.book()] {
        if (kind == u"Text"_s)
            return exportArchiveText(book);
        if (kind == u"Netscape"_s)
            return exportArchiveNetscape(book, thisMoment());
        return exportArchiveHtml(book);
    });
}

void ArchiveExport::exportTo(const QString& title, const QString& kind,
                             const std::function<QByteArray()>& content)
{
    const QString fileName = askFileName(title, kind);
    if (fileName.isEmpty())
        return;
    {
        const WaitPointer wait(m_window);
        writeFile(fileName, content());
    }
    ShowExportResult(fileName);
}

QString ArchiveExport::askFileName(const QString& title, const QString& kind) const
{
    const DropsDisabled guard(m_shell);
    const QString filter = kind == u"Text"_s ? u"Text-Datei (*.txt)|*.txt"_s
                                             : u"HTML-Datei (*.htm;*.html)|*.htm;*.html"_s;
    return m_shell.prompt().saveFileName(m_window, {title, m_shell.programFolder(), filter, {}});
}

void ArchiveExport::ShowExportResult(const QString& fileName)
{
    const DropsDisabled guard(m_shell);
    if (m_shell.prompt().askYesNo(m_window,
                                  u"Der Export war erfolgreich, möchten Sie die Datei '"_s +
                                      fileName + u"' anzeigen ?"_s,
                                  u"Meldung"_s, Prompt::Icon::Information))
        m_shell.VisitUrl(fileName);
}
