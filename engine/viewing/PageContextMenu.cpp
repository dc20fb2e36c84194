#include "engine/viewing/PageContextMenu.h"

#include "base/Shell.h"
#include "engine/page/WebEnginePage.h"
#include "pages/asking/UrlSchemes.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QUrl>
#include <QWebEngineContextMenuRequest>
#include <QWebEngineHistory>
#include <QWebEngineProfile>
#include <QWebEngineView>

using namespace Qt::StringLiterals;

namespace {

using Action = QWebEnginePage::WebAction;
using Item = PageMenuItem;
using Request = QWebEngineContextMenuRequest;

const QHash<Item, Action>& engineActions()
{
    static const QHash<Item, Action> all{
        {Item::OpenLink, Action::OpenLinkInThisWindow},
        {Item::SaveLink, Action::DownloadLinkToDisk},
        {Item::SaveImage, Action::DownloadImageToDisk},
        {Item::CopyImage, Action::CopyImageToClipboard},
        {Item::PlayOrPause, Action::ToggleMediaPlayPause},
        {Item::Mute, Action::ToggleMediaMute},
        {Item::Loop, Action::ToggleMediaLoop},
        {Item::Controls, Action::ToggleMediaControls},
        {Item::SaveMedia, Action::DownloadMediaToDisk},
        {Item::Undo, Action::Undo},
        {Item::Redo, Action::Redo},
        {Item::Cut, Action::Cut},
        {Item::Copy, Action::Copy},
        {Item::Paste, Action::Paste},
        {Item::SelectAll, Action::SelectAll},
        {Item::Back, Action::Back},
        {Item::Forward, Action::Forward},
        {Item::SavePage, Action::SavePage},
    };
    return all;
}

bool isForWindow(const QUrl& address, const QUrl& page)
{
    const QString scheme = address.scheme();
    return scheme == "http"_L1 || scheme == "https"_L1 ||
           (address.isLocalFile() && canPageOpen(address, page));
}

QString encoded(const QUrl& address)
{
    return address.toString(QUrl::FullyEncoded);
}

PageMenuTarget::Media mediaOf(const Request& request)
{
    switch (request.mediaType()) {
    case Request::MediaTypeImage:
        return PageMenuTarget::Media::Image;
    case Request::MediaTypeVideo:
    case Request::MediaTypeAudio:
        return PageMenuTarget::Media::Player;
    default:
        return PageMenuTarget::Media::None;
    }
}

QList<Item> disabledEdits(const Request& request)
{
    const QList<std::pair<Request::EditFlag, Item>> edits{
        {Request::CanUndo, Item::Undo},   {Request::CanRedo, Item::Redo},
        {Request::CanCut, Item::Cut},     {Request::CanCopy, Item::Copy},
        {Request::CanPaste, Item::Paste}, {Request::CanSelectAll, Item::SelectAll},
    };
    QList<Item> disabled;
    for (const auto& [flag, item] : edits)
        if (!request.editFlags().testFlag(flag))
            disabled << item;
    return disabled;
}

} // namespace

PageContextMenu::PageContextMenu(Shell& shell, WebEnginePage* page,
                                 const PageMenuCommands& services)
    : QObject(page), m_shell(shell), m_page(page), m_services(services)
{
}

void PageContextMenu::attachTo(QWebEngineView* view)
{
    view->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(view, &QWidget::customContextMenuRequested, this,
            [this, view](const QPoint& place) { open(view, place); });
}

void PageContextMenu::open(QWebEngineView* view, const QPoint& place)
{
    const Request* const request = view->lastContextMenuRequest();
    if (request == nullptr)
        return;
    QMenu* const menu = makePageMenu(view, targetOf(*request), commandsFor(*request));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (menu->isEmpty())
        menu->deleteLater();
    else
        menu->popup(view->mapToGlobal(place));
}

PageMenuTarget PageContextMenu::targetOf(const Request& request) const
{
    PageMenuTarget target;
    target.isLink = !request.linkUrl().isEmpty();
    const QUrl page = m_page->url();
    target.isLinkOpenable = canPageOpen(request.linkUrl(), page);
    target.isLinkForWindow = isForWindow(request.linkUrl(), page);
    target.media = mediaOf(request);
    const QUrl media = request.mediaUrl();
    target.isMediaSavable = media.scheme() == "data"_L1 || canPageOpen(media, page);
    target.isImageForWindow = isForWindow(media, page);
    target.isMuted = request.mediaFlags().testFlag(Request::MediaMuted);
    target.isLooping = request.mediaFlags().testFlag(Request::MediaLoop);
    target.hasControls = request.mediaFlags().testFlag(Request::MediaControls);
    target.isPageHeard = m_page->recentlyAudible();
    target.isPageSilenced = m_page->isAudioMuted();
    target.hasSelection = !request.selectedText().isEmpty();
    target.isEditable = request.isContentEditable();
    target.suggestions = request.spellCheckerSuggestions();
    target.disabled = disabledEdits(request);
    if (!m_page->history()->canGoBack())
        target.disabled << Item::Back;
    if (!m_page->history()->canGoForward())
        target.disabled << Item::Forward;
    return target;
}

PageMenuCommands PageContextMenu::commandsFor(const Request& request)
{
    PageMenuCommands commands = m_services;
    for (const auto& [item, action] : engineActions().asKeyValueRange())
        commands.items[item] = [this, act = action] { m_page->triggerAction(act); };
    // These three and "reload" are the user's wish, as with the toolbar's buttons: what a page
    // was refused or silenced for no longer counts, and the user is asked before a form is sent
    // again.
    commands.items[Item::Reload] = [this] { m_page->reload(); };
    for (const Item item : {Item::OpenLink, Item::Back, Item::Forward})
        commands.items[item] = [this, act = engineActions().value(item)] {
            emit m_page->userNavigates();
            m_page->triggerAction(act);
        };
    commands.items[Item::SoundOff] = [this] { m_page->setAudioMuted(true); };
    commands.items[Item::SoundOn] = [this] { m_page->setAudioMuted(false); };
    const QString link = encoded(request.linkUrl());
    const QString media = encoded(request.mediaUrl());
    const auto copy = [](const QString& text) { QGuiApplication::clipboard()->setText(text); };
    commands.items[Item::CopyLinkAddress] = [copy, link] { copy(link); };
    commands.items[Item::CopyImageAddress] = [copy, media] { copy(media); };
    commands.items[Item::OpenLinkInWindow] = [this, link] { m_shell.VisitUrl(link); };
    if (!m_page->profile()->isOffTheRecord()) // of such a page every window is private
        commands.items[Item::OpenLinkPrivately] = [this, link] { m_shell.VisitUrlPrivately(link); };
    const QString text = request.linkText();
    commands.items[Item::LinkToArchive] = [this, link, text] { m_shell.AddToArchive(text, link); };
    commands.items[Item::PageToArchive] = [this] { m_shell.AddPageToArchive(); };
    commands.items[Item::OpenImageInWindow] = [this, media] { m_shell.VisitUrl(media); };
    if (isForDesktop(request.linkUrl())) {
        for (const Item item : {Item::OpenLink, Item::OpenLinkInWindow})
            commands.items[item] = [this, url = request.linkUrl()] {
                emit m_page->desktopAddressWanted(url, true);
            };
    }
    const QString selected = request.selectedText().simplified();
    if (!selected.isEmpty())
        commands.items[Item::SearchText] = [this, selected] { m_services.search(selected); };
    commands.correct = [this](const QString& word) { m_page->replaceMisspelledWord(word); };
    return commands;
}
