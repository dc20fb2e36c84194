#include "app/FrameKeys.h"

#include "app/ActiveChild.h"
#include "app/FrameCommands.h"
#include "app/FrameMenus.h"
#include "app/MDIForm1.h"

#include <QAction>
#include <QMenuBar>
#include <QShortcut>

using namespace Qt::StringLiterals;

FrameKeys::FrameKeys(MDIForm1& frame, FrameCommands& commands) : QObject(&frame), m_frame(frame)
{
    addCommand(u"mn_Browser"_s, {Qt::CTRL | Qt::Key_N}, commands);
    addCommand(u"mn_Aktivschließen"_s, {Qt::CTRL | Qt::Key_W, Qt::CTRL | Qt::Key_F4}, commands);
    addCommand(u"mn_Exit"_s, {Qt::CTRL | Qt::Key_Q}, commands);
    addButton(Qt::Key_F5, u"Refresh"_s);
    addButton(Qt::ALT | Qt::Key_Left, u"Back"_s);
    addButton(Qt::ALT | Qt::Key_Right, u"Forward"_s);
    addButton(Qt::ALT | Qt::Key_Home, u"Home"_s);
    for (const QKeySequence& key : {QKeySequence(Qt::CTRL | Qt::Key_L), QKeySequence(Qt::Key_F6)}) {
        addKey(key, [this] {
            if (frmBrowser* active = m_frame.activeBrowser())
                active->focusAddress();
        });
    }
    addKey(Qt::CTRL | Qt::Key_F5, [this] {
        if (frmBrowser* active = m_frame.activeBrowser())
            active->refreshPastCache();
    });
    addKey(Qt::CTRL | Qt::Key_Tab, [this] { m_frame.activeChild().chooseNext(); });
    addKey(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, [this] { m_frame.activeChild().choosePrevious(); });
    addKey(Qt::ALT | Qt::Key_Minus, [this] {
        if (frmBrowser* active = m_frame.activeBrowser())
            active->showSystemMenu();
    });
    addKey(Qt::Key_F10, [this] {
        QMenuBar& bar = *m_frame.menuBar();
        bar.setActiveAction(bar.actions().constFirst());
    });
}

QShortcut* FrameKeys::addKey(const QKeySequence& key, std::function<void()> step)
{
    auto* shortcut = new QShortcut(key, &m_frame);
    connect(shortcut, &QShortcut::activated, this, std::move(step));
    return shortcut;
}

void FrameKeys::addCommand(const QString& role, const QList<QKeySequence>& keys,
                           FrameCommands& commands)
{
    // Shown beside the caption, where the item is the one that has the key: two owners of
    // a key would leave it to neither. An item that its menu has disabled would swallow
    // it, though.
    QAction* item = m_frame.menus().item(role);
    item->setShortcuts(keys);
    for (const QKeySequence& key : keys) {
        QShortcut* const standIn = addKey(key, [role, &commands] { commands.run(role); });
        const auto follow = [item, standIn] { standIn->setEnabled(!item->isEnabled()); };
        connect(item, &QAction::enabledChanged, standIn, follow);
        follow();
    }
}

void FrameKeys::addButton(const QKeySequence& key, const QString& button)
{
    addKey(key, [this, button] {
        if (frmBrowser* active = m_frame.activeBrowser())
            active->clickButton(button);
    });
}
