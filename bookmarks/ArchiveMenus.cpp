#include "bookmarks/ArchiveMenus.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include <array>

using namespace Qt::StringLiterals;

namespace {
using Kind = MenuEntry::Kind;
} // namespace

BookMenus::BookMenus(QMainWindow* window) : NamedMenus(window)
{
    static constexpr std::array<MenuEntry, 32> entries{{
        {u"mn_Archive", u"&Archiv", u"", Kind::Menu},
        {u"mn_Laden", u"&Laden", u"mn_Archive", Kind::Item},
        {u"mn_Speichern", u"&Speichern", u"mn_Archive", Kind::Item},
        {u"mn_tz3", u"-", u"mn_Archive", Kind::Separator},
        {u"mn_export", u"&Exportieren", u"mn_Archive", Kind::Menu},
        {u"mn_ExpTxt", u"in eine &Text Datei", u"mn_export", Kind::Item},
        {u"mn_tz4", u"-", u"mn_export", Kind::Separator},
        {u"mn_ExpHtml", u"in eine &HTML Datei", u"mn_export", Kind::Item},
        {u"mn_tz8", u"-", u"mn_export", Kind::Separator},
        {u"mn_ExpNetscapeHtml", u"in eine &Netscape Bookmark Datei", u"mn_export", Kind::Item},
        {u"mn_tz1", u"-", u"mn_Archive", Kind::Separator},
        {u"mn_Schließen", u"Schlie&ßen", u"mn_Archive", Kind::Item},
        {u"mn_Modify", u"&Modifizieren", u"", Kind::Menu},
        {u"mn_Ordner", u"&Ordner", u"mn_Modify", Kind::Menu},
        {u"mn_AddOrdner", u"&Hinzufügen", u"mn_Ordner", Kind::Item},
        {u"mn_DelOrdner", u"&Löschen", u"mn_Ordner", Kind::Item},
        {u"mn_AttrOrdner", u"&Umbenennen", u"mn_Ordner", Kind::Item},
        {u"mn_tz7", u"-", u"mn_Ordner", Kind::Separator},
        {u"mn_exportdetail", u"&Exportieren", u"mn_Ordner", Kind::Menu},
        {u"mn_expdetText", u"in eine &Text Datei", u"mn_exportdetail", Kind::Item},
        {u"mn_tz6", u"-", u"mn_exportdetail", Kind::Separator},
        {u"mn_expdetHtml", u"in eine &HTML Datei", u"mn_exportdetail", Kind::Item},
        {u"mn_tz9", u"-", u"mn_exportdetail", Kind::Separator},
        {u"mn_expdetNetscapeHtml", u"in eine &Netscape Bookmark Datei", u"mn_exportdetail",
         Kind::Item},
        {u"mn_tz5", u"-", u"mn_Modify", Kind::Separator},
        {u"mn_Bookmark", u"&Bookmark", u"mn_Modify", Kind::Menu},
        {u"mn_OpenAllBkm", u"&Alle öffnen", u"mn_Bookmark", Kind::Item},
        {u"mn_OpenBkm", u"Ö&ffnen", u"mn_Bookmark", Kind::Item},
        {u"mn_tz10", u"-", u"mn_Bookmark", Kind::Separator},
        {u"mn_Hinzufügen", u"&Hinzufügen", u"mn_Bookmark", Kind::Item},
        {u"mn_Loeschen", u"&Löschen", u"mn_Bookmark", Kind::Item},
        {u"mn_Eigenschaften", u"&Eigenschaften", u"mn_Bookmark", Kind::Item},
    }};
    for (const MenuEntry& entry : entries)
        add(entry, window->menuBar());
}

void BookMenus::set(const std::vector<MenuState>& states)
{
    for (const MenuState& state : states)
        item(state.item.toString())->setEnabled(state.enabled);
}

void BookMenus::popUp(ArchiveSelection selection, const QPoint& globalPos)
{
    if (selection == ArchiveSelection::EmptyTree || selection == ArchiveSelection::Nothing)
        return;
    const bool folders = selection != ArchiveSelection::Bookmark;
    const bool bookmarks = selection != ArchiveSelection::Root;
    item(u"mn_Ordner"_s)->setVisible(folders);
    item(u"mn_tz5"_s)->setVisible(folders && bookmarks);
    item(u"mn_Bookmark"_s)->setVisible(bookmarks);
    popUpWhole(globalPos);
    for (const QString& name : {u"mn_Ordner"_s, u"mn_tz5"_s, u"mn_Bookmark"_s})
        item(name)->setVisible(true);
}

void BookMenus::popUpWhole(const QPoint& globalPos)
{
    item(u"mn_Modify"_s)->menu()->exec(globalPos);
}
