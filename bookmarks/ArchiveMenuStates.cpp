#include "bookmarks/ArchiveMenuStates.h"

#include <array>
#include <string_view>

namespace {
constexpr std::array<QStringView, 4> folderItems{u"mn_AddOrdner", u"mn_DelOrdner", u"mn_AttrOrdner",
                                                 u"mn_exportdetail"};
constexpr std::array<QStringView, 5> bookmarkItems{
    u"mn_OpenAllBkm", u"mn_OpenBkm", u"mn_Hinzufügen", u"mn_Loeschen", u"mn_Eigenschaften"};

/// One sign for each item: "+" on, "-" off, anything else leaves it alone.
template <typename Items>
std::vector<MenuState> statesOf(const Items& items, std::string_view signs)
{
    std::vector<MenuState> states;
    for (std::size_t i = 0; i < items.size(); ++i)
        if (signs[i] == '+' || signs[i] == '-')
            states.push_back({items[i], signs[i] == '+'});
    return states;
}
} // namespace

std::vector<MenuState> folderMenuStates(ArchiveSelection selection)
{
    switch (selection) {
    case ArchiveSelection::EmptyTree:
        return statesOf(folderItems, "--- ");
    case ArchiveSelection::Nothing:
        return statesOf(folderItems, " -- ");
    case ArchiveSelection::Root:
        return statesOf(folderItems, "+---");
    case ArchiveSelection::EmptyFolder:
        return statesOf(folderItems, "+++-");
    case ArchiveSelection::Folder:
        return statesOf(folderItems, "++++");
    case ArchiveSelection::Bookmark:
        break;
    }
    return statesOf(folderItems, "----");
}

std::vector<MenuState> bookmarkMenuStates(ArchiveSelection selection)
{
    switch (selection) {
    case ArchiveSelection::EmptyTree:
    case ArchiveSelection::Nothing:
        return statesOf(bookmarkItems, "  ---");
    case ArchiveSelection::EmptyFolder:
    case ArchiveSelection::Folder:
        return statesOf(bookmarkItems, "+-+--");
    case ArchiveSelection::Bookmark:
        return statesOf(bookmarkItems, "-++++");
    case ArchiveSelection::Root:
        break;
    }
    return statesOf(bookmarkItems, "-----");
}
