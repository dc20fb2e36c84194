#include "bookmarks/ExportText.h"

#include "bookmarks/ExportLines.h"

namespace {
void addFolder(ExportLines& out, const Thema& folder)
{
    out.add("Thema: ").add(folder.DirName()).endLine().endLine();
    bool first = true;
    forEachBookmark(folder, [&out, &first](const Bookmark& bookmark) {
        if (!first)
            out.endLine();
        first = false;
        out.add("Url-Titel: ").add(bookmark.Titel()).endLine();
        out.add("Url: ").add(bookmark.Url()).endLine();
        out.add("Beschreibung: ").add(bookmark.Info()).endLine();
    });
    out.endLine().endLine();
}
} // namespace

QByteArray exportFolderText(const Thema& folder)
{
    ExportLines out;
    addFolder(out, folder);
    return out.bytes();
}

QByteArray exportArchiveText(const Book& book, const QString& heading)
{
    ExportLines out;
    if (!heading.isEmpty())
        out.add(heading).line("\n\n");
    forEachThema(book, [&out](const Thema& folder) { addFolder(out, folder); });
    return out.bytes();
}
