#pragma once

#include <QList>
#include <QStringList>

/// What the context menu of a page can offer.
enum class PageMenuItem {
    Separator,
    OpenLink,
    OpenLinkInWindow,
    OpenLinkPrivately,
    CopyLinkAddress,
    SaveLink,
    LinkToArchive,
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
    SearchText,
    Back,
    Forward,
    Reload,
    /// Silence all of the page, and let it be heard again.
    SoundOff,
    SoundOn,
    PageToArchive,
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
    /// A click on the link would open it.
    bool isLinkOpenable = false;
    /// Another window may open the address of the link for the page.
    bool isLinkForWindow = false;
    Media media = Media::None;
    /// The page could open the image or the medium itself.
    bool isMediaSavable = false;
    /// Another window may open the address of the image for the page.
    bool isImageForWindow = false;
    bool isMuted = false;
    bool isLooping = false;
    bool hasControls = false;
    /// The page as a whole plays, or is silenced.
    bool isPageHeard = false;
    bool isPageSilenced = false;
    bool hasSelection = false;
    bool isEditable = false;
    /// Corrections of the misspelled word there.
    QStringList suggestions = {};
    /// Items that are shown disabled.
    QList<PageMenuItem> disabled = {};
};

/// The items of the menu in their order, in groups that separators part. On a link, an image,
/// a player, an input field or selected text there are no items for the whole page.
QList<PageMenuItem> pageMenuItems(const PageMenuTarget& target);

/// The items without those that `isOffered` refuses, and without separators that would stand
/// first, last or twice.
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
