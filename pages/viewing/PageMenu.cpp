#include "pages/viewing/PageMenu.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace {

using enum PageMenuItem;

struct Caption {
    QString name;
    QString text;
    /// Shown beside the text only: the key itself is somebody else's, and works without a menu.
    QKeySequence key = {};
};

const QHash<PageMenuItem, Caption>& captions()
{
    static const QHash<PageMenuItem, Caption> all{
        {OpenLink, {u"OpenLink"_s, u"Link ö&ffnen"_s}},
        {OpenLinkInWindow, {u"OpenLinkInWindow"_s, u"Link in &neuem Fenster öffnen"_s}},
        {OpenLinkPrivately, {u"OpenLinkPrivately"_s, u"Link in &privatem Fenster öffnen"_s}},
        {CopyLinkAddress, {u"CopyLinkAddress"_s, u"Link-&Adresse kopieren"_s}},
        {SaveLink, {u"SaveLink"_s, u"&Link speichern unter..."_s}},
        {LinkToArchive, {u"LinkToArchive"_s, u"Link ins Ar&chiv..."_s}},
        {OpenImageInWindow, {u"OpenImageInWindow"_s, u"&Bild in neuem Fenster öffnen"_s}},
        {SaveImage, {u"SaveImage"_s, u"Bild &speichern unter..."_s}},
        {CopyImage, {u"CopyImage"_s, u"Bild &kopieren"_s}},
        {CopyImageAddress, {u"CopyImageAddress"_s, u"Bildad&resse kopieren"_s}},
        {PlayOrPause, {u"PlayOrPause"_s, u"&Wiedergabe/Pause"_s}},
        {Mute, {u"Mute"_s, u"&Ton aus"_s}},
        {Loop, {u"Loop"_s, u"End&los wiederholen"_s}},
        {Controls, {u"Controls"_s, u"&Bedienleiste anzeigen"_s}},
        {SaveMedia, {u"SaveMedia"_s, u"&Medium speichern unter..."_s}},
        {Undo, {u"Undo"_s, u"&Rückgängig"_s, QKeySequence::Undo}},
        {Redo, {u"Redo"_s, u"&Wiederherstellen"_s, Qt::CTRL | Qt::SHIFT | Qt::Key_Z}},
        {Cut, {u"Cut"_s, u"&Ausschneiden"_s, Qt::CTRL | Qt::Key_X}},
        {Copy, {u"Copy"_s, u"&Kopieren"_s, Qt::CTRL | Qt::Key_C}},
        {Paste, {u"Paste"_s, u"&Einfügen"_s, Qt::CTRL | Qt::Key_V}},
        {SelectAll, {u"SelectAll"_s, u"Alles a&uswählen"_s, QKeySequence::SelectAll}},
        {SearchText, {u"SearchText"_s, u"&Im Internet suchen"_s}},
        {Back, {u"Back"_s, u"&Zurück"_s, Qt::ALT | Qt::Key_Left}},
        {Forward, {u"Forward"_s, u"&Vorwärts"_s, Qt::ALT | Qt::Key_Right}},
        {Reload, {u"Reload"_s, u"&Aktualisieren"_s, Qt::Key_F5}},
        {PageToArchive, {u"PageToArchive"_s, u"Seite &ins Archiv..."_s, Qt::CTRL | Qt::Key_D}},
        {SavePage, {u"SavePage"_s, u"Seite &speichern unter..."_s, Qt::CTRL | Qt::Key_S}},
        {SoundOff, {u"SoundOff"_s, u"&Ton aus"_s}},
        {SoundOn, {u"SoundOn"_s, u"&Ton an"_s}},
        {Find, {u"Find"_s, u"Su&chen..."_s, Qt::CTRL | Qt::Key_F}},
        {Print, {u"Print"_s, u"&Drucken..."_s, Qt::CTRL | Qt::Key_P}},
        {SavePdf, {u"SavePdf"_s, u"Als &PDF speichern..."_s}},
        {ZoomIn, {u"ZoomIn"_s, u"Ver&größern"_s, Qt::CTRL | Qt::Key_Plus}},
        {ZoomOut, {u"ZoomOut"_s, u"Ver&kleinern"_s, Qt::CTRL | Qt::Key_Minus}},
        {ZoomReset, {u"ZoomReset"_s, u"&Originalgröße"_s, Qt::CTRL | Qt::Key_0}},
        {Downloads, {u"Downloads"_s, u"Down&loads"_s, Qt::CTRL | Qt::Key_J}},
        {BrowserData,
         {u"BrowserData"_s, u"&Browserdaten löschen..."_s, Qt::CTRL | Qt::SHIFT | Qt::Key_Delete}},
    };
    return all;
}

void addSuggestions(QMenu& menu, const QStringList& words,
                    const std::function<void(const QString&)>& correct)
{
    for (const QString& word : words) {
        QString text = word;
        QAction* entry = menu.addAction(text.replace(u'&', u"&&"_s));
        entry->setObjectName(u"mn_Suggestion"_s);
        QFont bold = entry->font();
        bold.setBold(true);
        entry->setFont(bold);
        QObject::connect(entry, &QAction::triggered, &menu, [correct, word] { correct(word); });
    }
    if (!words.isEmpty())
        menu.addSeparator();
}

void markState(QAction& entry, PageMenuItem item, const PageMenuTarget& target)
{
    entry.setEnabled(!target.disabled.contains(item));
    if (item == Mute || item == Loop || item == Controls) {
        entry.setCheckable(true);
        entry.setChecked(item == Mute   ? target.isMuted
                         : item == Loop ? target.isLooping
                                        : target.hasControls);
    }
}

} // namespace

QMenu* makePageMenu(QWidget* parent, const PageMenuTarget& target, const PageMenuCommands& commands)
{
    auto* menu = new QMenu(parent);
    menu->setObjectName(u"mn_Page"_s);
    if (commands.correct)
        addSuggestions(*menu, target.suggestions, commands.correct);
    const auto isOffered = [&](PageMenuItem item) { return commands.items.contains(item); };
    const QList<PageMenuItem> items = offeredItems(pageMenuItems(target), isOffered);
    for (const PageMenuItem item : items) {
        if (item == Separator) {
            menu->addSeparator();
            continue;
        }
        const Caption caption = captions().value(item);
        QAction* entry = menu->addAction(caption.text);
        entry->setObjectName(u"mn_"_s + caption.name);
        entry->setShortcut(caption.key);
        entry->setShortcutContext(Qt::WidgetShortcut);
        entry->setShortcutVisibleInContextMenu(true);
        markState(*entry, item, target);
        if (commands.isDisabled && commands.isDisabled(item))
            entry->setEnabled(false);
        QObject::connect(entry, &QAction::triggered, menu, commands.items.value(item));
    }
    return menu;
}
