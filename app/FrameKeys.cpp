#include "app/FrameKeys.h"

#include "app/ChildArea.h"
#include "app/FrameCommands.h"
#include "app/FrameMenus.h"
#include "app/MDIForm1.h"

#include <QAction>
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
    addKey(Qt::CTRL | Qt::Key_Tab, [this] { m_frame.area().activateNextSubWindow(); });
    addKey(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab,
           [this] { m_frame.area().activatePreviousSubWindow(); });
}

void FrameKeys::addKey(const QKeySequence& key, std::function<void()> step)
{
    auto* shortcut = new QShortcut(key, &m_frame);
    connect(shortcut, &QShortcut::activated, this, std::move(step));
}

void FrameKeys::addCommand(const QString& role, const QList<QKeySequence>& keys,
                           FrameCommands& commands)
{
    // Shown beside the caption only: an item that its menu has disabled would
    // swallow the key.
    QAction* item = m_frame.menus().item(role);
    item->setShortcuts(keys);
    item->setShortcutContext(Qt::WidgetShortcut);
    for (const QKeySequence& key : keys)
        addKey(key, [role, &commands] { commands.run(role); });
}

void FrameKeys::addButton(const QKeySequence& key, const QString& button)
{
    addKey(key, [this, button] {
        if (frmBrowser* active = m_frame.activeBrowser())
            active->clickButton(button);
    });
}
