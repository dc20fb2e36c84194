#include "base/NamedMenus.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

NamedMenus::NamedMenus(QMainWindow* window) : QObject(window), m_window(window)
{
    window->menuBar()->setNativeMenuBar(false);
}

QAction* NamedMenus::add(const MenuEntry& entry, QWidget* top)
{
    const QString name = entry.name.toString();
    const QString role = entry.reportedRole();
    QAction* action = nullptr;
    if (entry.kind == MenuEntry::Kind::Menu) {
        auto* menu = new QMenu(entry.caption.toString(), m_window);
        menu->setObjectName(name);
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
    if (entry.under.isEmpty())
        top->addAction(action);
    else
        item(entry.under.toString())->menu()->addAction(action);
    return action;
}
