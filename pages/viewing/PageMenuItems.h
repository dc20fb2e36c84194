#pragma once

#include <QList>
#include <QStringList>

/// What the menu of a page can offer.
enum class PageMenuItem {
    Separator,
    OpenLink,
    OpenLinkInWindow,
    CopyLinkAddress,
    SaveLink,
    OpenImageInWindow,
    SaveImage,
    CopyImage,
    CopyImageAddress,
    PlayOrPause,
    Mute,
    Loop,
    Controls,
    SaveMedia,
    Undo,
    Redo,
    Cut,
    Copy,
    Paste,
    SelectAll,
    Back,
    Forward,
    Reload,
    SavePage,
    Find,
    Print,
    SavePdf,
    ZoomIn,
    ZoomOut,
    ZoomReset,
    Downloads,
    BrowserData,
};

/// The place of a page that the menu is opened on, and what can be done there.
struct PageMenuTarget {
    enum class Media { None, Image, Player };

    bool isLink = false;
    /// The page itself could open the link, if it were clicked on.
    bool isLinkOpenable = false;
    /// The link leads to an address that another window can open for the page.
    bool isLinkForWindow = false;
    Media media = Media::None;
    /// The image or the player comes from where the page may take it.
    bool isMediaSavable = false;
    /// The image comes from an address that another window can open for the page.
    bool isImageForWindow = false;
    bool isMuted = false;
    bool isLooping = false;
    bool hasControls = false;
    bool hasSelection = false;
    bool isEditable = false;
    /// Corrections of the misspelled word there.
    QStringList suggestions = {};

    /// Items that are shown, but have nothing to do at the moment.
    QList<PageMenuItem> idle = {};
};

/// The items of the menu in their order, in groups parted by separators. The
/// page's own items are left out where the menu is about something on it.
QList<PageMenuItem> pageMenuItems(const PageMenuTarget& target);

/// The items without those that `isOffered` refuses, and without separators
/// that part nothing.
template <typename Predicate>
QList<PageMenuItem> offeredItems(const QList<PageMenuItem>& items, Predicate isOffered)
{
    QList<PageMenuItem> kept;
    bool isParted = false;
    for (const PageMenuItem item : items) {
        if (item == PageMenuItem::Separator) {
            isParted = !kept.isEmpty();
        } else if (isOffered(item)) {
            if (isParted)
                kept << PageMenuItem::Separator;
            kept << item;
            isParted = false;
        }
    }
    return kept;
}
