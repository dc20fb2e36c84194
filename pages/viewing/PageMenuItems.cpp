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
        items << OpenLinkInWindow;
    items << CopyLinkAddress;
    if (target.isLinkForWindow)
        items << SaveLink;
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
        items << QList{Separator, Copy, SelectAll};
    if (!items.isEmpty())
        return items;
    return {Back,    Forward,   Reload,    Separator, SavePage,   SavePdf,
            Print,   Separator, Find,      SelectAll, Separator,  ZoomIn,
            ZoomOut, ZoomReset, Separator, Downloads, BrowserData};
}
