#include "base/ElidedLabel.h"
#include "base/Shell.h"
#include "bookmarks/ArchiveDrops.h"
#include "bookmarks/ArchiveEditor.h"
#include "bookmarks/ArchiveExport.h"
#include "bookmarks/ArchiveMenus.h"
#include "bookmarks/ArchiveView.h"
#include "bookmarks/TreeMouse.h"
#include "bookmarks/frmBook.h"

using namespace Qt::StringLiterals;

void frmBook::buildMenus()
{
    m_menus = new BookMenus(this);
    connect(m_menus, &BookMenus::opening, this, &frmBook::updateMenus);
    connect(m_menus, &BookMenus::chosen, this,
            [this](const QString& item) { run(m_byItem.value(item)); });
}

void frmBook::connectItems()
{
    const auto show = [this](bool newBookmark) { showProperties(newBookmark); };
    m_byItem = {
        {u"mn_Laden"_s, [this] { loadArchive(); }},
        {u"mn_Speichern"_s, [this] { saveAndReload(); }},
        {u"mn_Schließen"_s, [this] { close(); }},
        {u"mn_AddOrdner"_s, [this] { m_commands->addFolder(); }},
        {u"mn_DelOrdner"_s, [this] { m_commands->deleteFolder(); }},
        {u"mn_AttrOrdner"_s, [this] { m_commands->renameFolder(); }},
        {u"mn_OpenAllBkm"_s, [this] { OpenAll(); }},
        {u"mn_OpenBkm"_s, [this] { OpenBookmark(); }},
        {u"mn_Hinzufügen"_s, [this, show] { m_commands->addBookmark(show); }},
        {u"mn_Loeschen"_s, [this] { m_commands->deleteBookmark(); }},
        {u"mn_Eigenschaften"_s, [this, show] { m_commands->editBookmark(show); }},
    };
}

void frmBook::connectExports()
{
    const auto folder = [this](const QString& kind) {
        return [this, kind] {
            const auto selected = selectedFolder();
            m_files.checkExportable(selected.get());
            BookExport(m_shell, this).ExportFolder(kind, selected);
        };
    };
    const auto archive = [this](const QString& kind) {
        return [this, kind] {
            m_files.checkExportable(nullptr);
            BookExport(m_shell, this).ExportArchive(kind, Buch());
        };
    };
    m_byItem[u"mn_expdetText"_s] = folder(u"Text"_s);
    m_byItem[u"mn_expdetHtml"_s] = folder({});
    m_byItem[u"mn_expdetNetscapeHtml"_s] = folder(u"Netscape"_s);
    m_byItem[u"mn_ExpTxt"_s] = archive(u"Text"_s);
    m_byItem[u"mn_ExpHtml"_s] = archive({});
    m_byItem[u"mn_ExpNetscapeHtml"_s] = archive(u"Netscape"_s);
}

void frmBook::connectKeys()
{
    const auto runs = [this](const QString& item) {
        return [this, item] { run(m_byItem.value(item)); };
    };
    connect(m_view, &ArchiveView::escapePressed, this, &frmBook::close);
    connect(m_view, &ArchiveView::renamePressed, this, runs(u"mn_AttrOrdner"_s));
    connect(m_view, &ArchiveView::deletePressed, this, runs(u"mn_Loeschen"_s));
    connect(m_view, &ArchiveView::enterPressed, this, runs(u"mn_OpenBkm"_s));
    connect(m_view, &ArchiveView::menuPressed, this, &frmBook::popUpMenu);
    connect(m_view, &ArchiveView::labelEdited, this, &frmBook::labelEdited);
}

void frmBook::connectMouse()
{
    const auto tag = [](const QModelIndex& node) {
        return node.data(ArchiveTree::TagRole).toString();
    };
    const auto url = [this](const QModelIndex& node) { return m_commands->url(node); };
    auto* mouse = new TreeMouse(*m_view, {tag, url});
    connect(m_view, &ArchiveView::nodeReached, mouse, &TreeMouse::tellAddress);
    connect(mouse, &TreeMouse::statusText, m_statusPanel, &ElidedLabel::showText);
    connect(mouse, &TreeMouse::contextMenuWanted, this, &frmBook::popUpMenu);
    connect(mouse, &TreeMouse::folderMenuWanted, this,
            [this](const QPoint& pos) { run([this, pos] { m_menus->popUpWhole(pos); }); });
    connect(mouse, &TreeMouse::openWanted, this, [this] { run([this] { OpenBookmark(); }); });
    const auto* drops = new TreeDrops(*m_view, m_history);
    connect(drops, &TreeDrops::bookmarkDropped, this,
            [this](const QString& title, const QString& address) {
                run([this, &title, &address] { AddBkmToArchive(title, address, {}); });
            });
}
