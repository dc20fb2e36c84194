#include "pages/viewing/PageMenuItems.h"

namespace {

using enum PageMenuItem;
using Media = PageMenuTarget::Media;

QList<PageMenuItem> linkItems(const PageMenuTarget& target)
{
    QList<PageMenuItem> items{Separator};
    if (target.isLinkOpenable)
        items << OpenLink;
    if (target.isLinkForWindow)
        items << OpenLinkInWindow << OpenLinkPrivately;
    items << CopyLinkAddress;
    if (target.isLinkForWindow)
        items << SaveLink << LinkToArchive;
    return items;
}

QList<PageMenuItem> imageItems(const PageMenuTarget& target)
{
    QList<PageMenuItem> items{Separator};
    if (target.isImageForWindow)
        items << OpenImageInWindow;
    if (target.isMediaSavable)
        items << SaveImage;
    return items << QList{CopyImage, CopyImageAddress};
}

/// A page that is silenced can be so full of links and players that no place is left for the
/// menu of the whole page. A player has an item of its own that switches it off.
QList<PageMenuItem> soundItems(const PageMenuTarget& target)
{
    if (target.isPageSilenced)
        return {Separator, SoundOn};
    if (target.isPageHeard && target.media != Media::Player)
        return {Separator, SoundOff};
    return {};
}

} // namespace

QList<PageMenuItem> pageMenuItems(const PageMenuTarget& target)
{
    QList<PageMenuItem> items;
    if (target.isLink)
        items << linkItems(target);
    if (target.media == Media::Image)
        items << imageItems(target);
    if (target.media == Media::Player)
        items << QList{Separator, PlayOrPause, Mute, Loop, Controls};
    if (target.media == Media::Player && target.isMediaSavable)
        items << QList{Separator, SaveMedia};
    if (target.isEditable)
        items << QList{Separator, Undo, Redo, Separator, Cut, Copy, Paste, Separator, SelectAll};
    else if (target.hasSelection)
        items << QList{Separator, Copy, SelectAll, Separator, SearchText};
    if (!items.isEmpty())
        return items << soundItems(target);
    return QList{Back, Forward, Reload}
           << soundItems(target)
           << QList{Separator, PageToArchive, SavePage,  SavePdf,   Print,
                    Separator, Find,          SelectAll, Separator, ZoomIn,
                    ZoomOut,   ZoomReset,     Separator, Downloads, BrowserData};
}
