#include "base/NamedMenus.h"

#include <QAction>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

NamedMenus::NamedMenus(QMainWindow* window) : QObject(window)
{
    window->menuBar()->setNativeMenuBar(false);
    window->menuBar()->installEventFilter(this);
}

QAction* NamedMenus::add(const MenuEntry& entry, QWidget* top)
{
    const QString name = entry.name.toString();
    const QString role = entry.reportedRole();
    QWidget* const place = entry.under.isEmpty() ? top : item(entry.under.toString())->menu();
    QAction* action = nullptr;
    if (entry.kind == MenuEntry::Kind::Menu) {
        // Wayland wants to know from which menu another one opens: that is its parent.
        auto* menu = new QMenu(entry.caption.toString(), place);
        menu->setObjectName(name);
        menu->installEventFilter(this);
        connect(menu, &QMenu::aboutToShow, this, [this, role] { emit opening(role); });
        action = menu->menuAction();
    } else {
        // Some styles would write a separator's text beside its line.
        const bool isLine = entry.kind == MenuEntry::Kind::Separator;
        action = new QAction(isLine ? QString() : entry.caption.toString(), this);
        action->setSeparator(isLine);
        action->setCheckable(entry.kind == MenuEntry::Kind::CheckItem);
        connect(action, &QAction::triggered, this, [this, role] { emit chosen(role); });
    }
    action->setObjectName(name);
    m_items.insert(name, action);
    place->addAction(action);
    return action;
}

void NamedMenus::showKey(const QString& name, const QKeySequence& key)
{
    QAction* const action = item(name);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut); // of the menu bar: see below
    action->setShortcutVisibleInContextMenu(true);
    m_shownKeys << key;
}

bool NamedMenus::eventFilter(QObject* /*watched*/, QEvent* event)
{
    // A menu bar that was reached by a key, and its menus, need the keys for themselves: Enter
    // opens a menu.
    if (event->type() == QEvent::ShortcutOverride &&
        m_shownKeys.contains(QKeySequence(static_cast<QKeyEvent*>(event)->keyCombination())))
        event->accept();
    return false;
}
