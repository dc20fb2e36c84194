#include "app/FrameMenus.h"

#include "app/FoldingMenuBar.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>

#include <array>

using namespace Qt::StringLiterals;

namespace {
using Kind = MenuEntry::Kind;

constexpr std::array<MenuEntry, 26> menuBarEntries{{
    {u"mn_Datei", u"&Datei", u"", Kind::Menu},
    {u"mn_Browser", u"&Neuer Browser", u"mn_Datei", Kind::Item},
    {u"mn_Einstellungen", u"Browser &Einstellungen...", u"mn_Datei", Kind::Item},
    {u"mn_IEProp", u"&Microsoft Internet Eigenschaften...", u"mn_Datei", Kind::Item},
    {u"mn_t1", u"-", u"mn_Datei", Kind::Separator},
    {u"mn_Exit", u"&Beenden", u"mn_Datei", Kind::Item},
    {u"mn_Anzeige", u"E&xtras", u"", Kind::Menu},
    {u"mn_Bookmarks", u"&Bookmark Archiv", u"mn_Anzeige", Kind::Item},
    {u"mn_Historie", u"&Historie", u"mn_Anzeige", Kind::Item},
    {u"mn_Toggle", u"&Status-Zeile", u"mn_Anzeige", Kind::CheckItem},
    {u"mn_t5", u"-", u"mn_Anzeige", Kind::Separator},
    {u"mn_Email", u"&E-Mail Anwendung", u"mn_Anzeige", Kind::Item},
    {u"mn_Fenster", u"&Fenster", u"", Kind::Menu},
    {u"mn_Untereinander", u"&Untereinander", u"mn_Fenster", Kind::CheckItem},
    {u"mn_Nebeneinander", u"&Nebeneinander", u"mn_Fenster", Kind::CheckItem},
    {u"mn_Kaskadiert", u"&Kaskadiert", u"mn_Fenster", Kind::CheckItem},
    {u"mn_t2", u"-", u"mn_Fenster", Kind::Separator},
    {u"mn_Aktives", u"&Aktives Fenster", u"mn_Fenster", Kind::Menu},
    {u"mn_adresszeile", u"&Adresszeile", u"mn_Aktives", Kind::CheckItem},
    {u"mn_toolbar", u"&Toolbar", u"mn_Aktives", Kind::CheckItem},
    {u"mn_t6", u"-", u"mn_Fenster", Kind::Separator},
    {u"mn_Aktivschließen", u"Schließen", u"mn_Fenster", Kind::Item},
    {u"mn_Alleschließen", u"Alle &schließen", u"mn_Fenster", Kind::Item},
    {u"mn_Info", u"&?", u"", Kind::Menu},
    {u"mn_Tessera", u"&Info über ", u"mn_Info", Kind::Item},
    {u"mn_t4", u"-", u"mn_Info", Kind::Separator},
}};

constexpr std::array<MenuEntry, 23> contextEntries{{
    {u"mn_ctxtBrowser", u"Neuer Browser", u"", Kind::Item, u"mn_Browser"},
    {u"mn_ctxtEinstell", u"Browser Einstellungen...", u"", Kind::Item, u"mn_Einstellungen"},
    {u"mn_ctxtIEProp", u"Microsoft Internet Eigenschaften...", u"", Kind::Item, u"mn_IEProp"},
    {u"mn_ctxt_3", u"-", u"", Kind::Separator},
    {u"mn_ctxtBookm", u"Bookmark Archiv", u"", Kind::Item, u"mn_Bookmarks"},
    {u"mn_ctxtHistorie", u"Historie", u"", Kind::Item, u"mn_Historie"},
    {u"mn_ctxtStatus", u"Status-Zeile", u"", Kind::CheckItem, u"mn_Toggle"},
    {u"mn_ctxt_4", u"-", u"", Kind::Separator},
    {u"mn_ctxtEmail", u"E-Mail Anwendung", u"", Kind::Item, u"mn_Email"},
    {u"mn_ctxt_1", u"-", u"", Kind::Separator},
    {u"mn_ctxtFenster", u"Fenster", u"", Kind::Menu, u"mn_Fenster"},
    {u"mn_ctxtUntereinander", u"Untereinander", u"mn_ctxtFenster", Kind::CheckItem,
     u"mn_Untereinander"},
    {u"mn_ctxtNebeneinander", u"Nebeneinander", u"mn_ctxtFenster", Kind::CheckItem,
     u"mn_Nebeneinander"},
    {u"mn_ctxtKaskadiert", u"Kaskadiert", u"mn_ctxtFenster", Kind::CheckItem, u"mn_Kaskadiert"},
    {u"mn_ctxt_1_1", u"-", u"", Kind::Separator},
    {u"mn_ctxtAktives", u"Aktives Fenster", u"", Kind::Menu, u"mn_Aktives"},
    {u"mn_ctxtAdresszeile", u"Adresszeile", u"mn_ctxtAktives", Kind::CheckItem, u"mn_adresszeile"},
    {u"mn_ctxtToolbar", u"Toolbar", u"mn_ctxtAktives", Kind::CheckItem, u"mn_toolbar"},
    {u"mn_ctxt_1_2", u"-", u"", Kind::Separator},
    {u"mn_ctxtAktivschließen", u"Schließen", u"", Kind::Item, u"mn_Aktivschließen"},
    {u"mn_ctxtAlleschließen", u"Alle schließen", u"", Kind::Item, u"mn_Alleschließen"},
    {u"mn_ctxt_2", u"-", u"", Kind::Separator},
    {u"mn_ctxtExit", u"Beenden", u"", Kind::Item, u"mn_Exit"},
}};

// In the order in which they are asked for.
constexpr std::array<std::pair<QStringView, Arrangement>, 3> arrangementItems{{
    {u"mn_Untereinander", Arrangement::TileHorizontal},
    {u"mn_Kaskadiert", Arrangement::Cascade},
    {u"mn_Nebeneinander", Arrangement::TileVertical},
}};

/// Entries beyond it have no access key.
constexpr int lastKey = 9;
} // namespace

QString windowListEntry(int number, const QString& title, qsizetype longest, qsizetype kept)
{
    QString shown = title.isEmpty() ? u"Leeres Fenster"_s : title;
    shown.replace(u"[*][*]"_s, u"[*]"_s); // doubled, as a window title needs it
    if (shown.size() > longest) {
        qsizetype end = longest - kept - 1;
        if (shown[end - 1].isHighSurrogate())
            --end;
        shown = shown.left(end).trimmed() + u'…' + shown.last(kept);
    }
    shown.replace(u'&', u"&&"_s);
    return (number <= lastKey ? u"&%1 %2"_s : u"%1 %2"_s).arg(number).arg(shown);
}

FrameMenus::FrameMenus(QMainWindow* frame, const QString& makerAddress)
    : NamedMenus(frame), m_bar(new FoldingMenuBar(frame))
{
    frame->setMenuBar(m_bar);
    const auto addAll = [this](const auto& entries, QWidget* top) {
        for (const MenuEntry& entry : entries)
            m_byRole.insert(entry.reportedRole(), add(entry, top));
    };
    addAll(menuBarEntries, m_bar);
    add({u"mn_loomwork", makerAddress, u"mn_Info", Kind::Item}, m_bar);

    m_context = new QMenu(u"CtxtMenu"_s, frame);
    m_context->setObjectName(u"mn_ctxt"_s);
    connect(m_context, &QMenu::aboutToShow, this, [this] { emit opening(u"mn_Fenster"_s); });
    addAll(contextEntries, m_context);
}

void FrameMenus::foldBar(bool isFolded)
{
    m_bar->fold(isFolded);
}

void FrameMenus::check(const QString& role, bool checked)
{
    const QList<QAction*> pair = m_byRole.values(role);
    for (QAction* action : pair)
        action->setChecked(checked);
}

void FrameMenus::enable(const QString& role, bool enabled)
{
    const QList<QAction*> pair = m_byRole.values(role);
    for (QAction* action : pair)
        action->setEnabled(enabled);
}

Arrangement FrameMenus::checkedArrangement() const
{
    for (const auto& [role, mode] : arrangementItems)
        if (item(role.toString())->isChecked())
            return mode;
    return Arrangement::None;
}

void FrameMenus::checkArrangement(Arrangement mode)
{
    for (const auto& [role, its] : arrangementItems)
        check(role.toString(), its == mode);
}
