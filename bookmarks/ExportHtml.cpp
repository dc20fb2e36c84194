#include "bookmarks/ExportHtml.h"

#include "bookmarks/ExportLines.h"

namespace {
void addFolder(ExportLines& out, const Thema& folder)
{
    out.add("<H1>").add(folder.DirName()).line("</H1>");
    forEachBookmark(folder, [&out](const Bookmark& bookmark) {
        out.add("<A HREF='").add(bookmark.Url()).add("'>");
        out.add(bookmark.Titel()).add("</A><BR>");
        if (!bookmark.Info().isEmpty())
            out.add(bookmark.Info()).add("<BR>");
        out.endLine();
    });
}
} // namespace

QByteArray exportFolderHtml(const Thema& folder)
{
    ExportLines out;
    out.line("<HTML><BODY>");
    addFolder(out, folder);
    out.line("</BODY></HTML>");
    return out.bytes();
}

QByteArray exportArchiveHtml(const Book& book)
{
    ExportLines out;
    out.line("<HTML><TITLE></TITLE><BODY>");
    forEachThema(book, [&out](const Thema& folder) { addFolder(out, folder); });
    out.line("</BODY></HTML>");
    return out.bytes();
}
