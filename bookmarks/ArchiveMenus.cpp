#include "bookmarks/ArchiveMenus.h"

#include "bookmarks/ArchiveView.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include <array>
#include <string_view>
#include <vector>

using namespace Qt::StringLiterals;

namespace {
using Kind = MenuEntry::Kind;

/// What is selected in the tree, as far as the menus go by it.
enum class Selection { EmptyTree, Nothing, Root, EmptyFolder, Folder, Bookmark };

Selection selectionIn(const ArchiveView& view)
{
    const ArchiveTree& tree = view.tree();
    const QModelIndex node = view.selectedNode();
    switch (tree.kind(node)) {
    case NodeKind::Root:
        return Selection::Root;
    case NodeKind::Folder:
        return tree.hasChildren(node) ? Selection::Folder : Selection::EmptyFolder;
    case NodeKind::Bookmark:
        return Selection::Bookmark;
    case NodeKind::None:
        break;
    }
    return tree.hasChildren() ? Selection::Nothing : Selection::EmptyTree;
}

struct MenuState {
    QStringView item;
    bool enabled = false;
};

constexpr std::array<QStringView, 4> folderItems{u"mn_AddOrdner", u"mn_DelOrdner", u"mn_AttrOrdner",
                                                 u"mn_exportdetail"};
constexpr std::array<QStringView, 5> bookmarkItems{
    u"mn_OpenAllBkm", u"mn_OpenBkm", u"mn_Hinzufügen", u"mn_Loeschen", u"mn_Eigenschaften"};

/// `signs` has one sign for each item: "+" enables it, "-" disables it, a blank leaves it as
/// it is.
template <typename Items>
std::vector<MenuState> statesOf(const Items& items, std::string_view signs)
{
    std::vector<MenuState> states;
    for (std::size_t i = 0; i < items.size(); ++i)
        if (signs[i] != ' ')
            states.push_back({items[i], signs[i] == '+'});
    return states;
}
/// The items of the folder menu to switch.
std::vector<MenuState> folderMenuStates(Selection selection)
{
    switch (selection) {
    case Selection::EmptyTree:
        return statesOf(folderItems, "--- ");
    case Selection::Nothing:
        return statesOf(folderItems, " -- ");
    case Selection::Root:
        return statesOf(folderItems, "+---");
    case Selection::EmptyFolder:
        return statesOf(folderItems, "+++-");
    case Selection::Folder:
        return statesOf(folderItems, "++++");
    case Selection::Bookmark:
        break;
    }
    return statesOf(folderItems, "----");
}

/// The items of the bookmark menu to switch.
std::vector<MenuState> bookmarkMenuStates(Selection selection)
{
    switch (selection) {
    case Selection::EmptyTree:
    case Selection::Nothing:
        return statesOf(bookmarkItems, "  ---");
    case Selection::EmptyFolder:
    case Selection::Folder:
        return statesOf(bookmarkItems, "+-+--");
    case Selection::Bookmark:
        return statesOf(bookmarkItems, "-++++");
    case Selection::Root:
        break;
    }
    return statesOf(bookmarkItems, "-----");
}
} // namespace

ArchiveMenus::ArchiveMenus(QMainWindow* window, const ArchiveView& view)
    : NamedMenus(window), m_view(view)
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
    showKey(u"mn_Speichern"_s, QKeySequence::Save);
    showKey(u"mn_AttrOrdner"_s, Qt::Key_F2);
    showKey(u"mn_OpenBkm"_s, Qt::Key_Return);
    showKey(u"mn_Loeschen"_s, Qt::Key_Delete);
    showKey(u"mn_Schließen"_s, Qt::Key_Escape);
    connect(this, &NamedMenus::opening, this, &ArchiveMenus::update);
}

void ArchiveMenus::update(const QString& menu)
{
    const auto enable = [this](const std::vector<MenuState>& states) {
        for (const MenuState& state : states)
            item(state.item.toString())->setEnabled(state.enabled);
    };
    const Selection selection = selectionIn(m_view);
    if (menu == u"mn_Modify"_s || menu == u"mn_Ordner"_s)
        enable(folderMenuStates(selection));
    if (menu == u"mn_Modify"_s || menu == u"mn_Bookmark"_s)
        enable(bookmarkMenuStates(selection));
}

void ArchiveMenus::popUp(const QPoint& globalPos)
{
    const Selection selection = selectionIn(m_view);
    if (selection == Selection::EmptyTree || selection == Selection::Nothing)
        return;
    const bool folders = selection != Selection::Bookmark;
    const bool bookmarks = selection != Selection::Root;
    item(u"mn_Ordner"_s)->setVisible(folders);
    item(u"mn_tz5"_s)->setVisible(folders && bookmarks);
    item(u"mn_Bookmark"_s)->setVisible(bookmarks);
    popUpWhole(globalPos);
    for (const QString& name : {u"mn_Ordner"_s, u"mn_tz5"_s, u"mn_Bookmark"_s})
        item(name)->setVisible(true);
}

void ArchiveMenus::popUpWhole(const QPoint& globalPos)
{
    item(u"mn_Modify"_s)->menu()->exec(globalPos);
}
