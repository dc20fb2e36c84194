#pragma once

#include <QStringView>

#include <vector>

/// What the menus of the archive window go by.
enum class ArchiveSelection { EmptyTree, Nothing, Root, EmptyFolder, Folder, Bookmark };

struct MenuState {
    QStringView item;
    bool enabled = false;
};

/// The items of the folder menu to switch; those left out stay as they are.
std::vector<MenuState> folderMenuStates(ArchiveSelection selection);
/// The items of the bookmark menu to switch; those left out stay as they are.
std::vector<MenuState> bookmarkMenuStates(ArchiveSelection selection);
