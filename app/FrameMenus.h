#pragma once

#include "app/Arrangement.h"

#include <QHash>
#include <QObject>

class QAction;
class QMainWindow;
class QMenu;

/// The frame's menu bar and its context menu. An item of the context menu has
/// the role of the menu-bar item that does the same; both report under the name
/// of that role, and carry the same check marks.
class FrameMenus : public QObject {
    Q_OBJECT
public:
    enum class Kind { Menu, Item, CheckItem, Separator };
    struct Entry;

    /// Builds the menu bar of `frame`; `makerAddress` is the caption of `mn_loomwork`.
    FrameMenus(QMainWindow* frame, const QString& makerAddress);

    /// The item with this name, of either menu; null if there is none.
    QAction* item(const QString& name) const { return m_items.value(name); }
    QMenu* contextMenu() const { return m_context; }

    /// Sets the check mark, or the enabled state, of both items of a role.
    void check(const QString& role, bool checked);
    void enable(const QString& role, bool enabled);

    /// The arrangement that is checked, asked for in the order rows, cascade, columns.
    Arrangement checkedArrangement() const;
    /// Checks this one of the three and unchecks the others; None unchecks all.
    void checkArrangement(Arrangement mode);

signals:
    /// An item was chosen.
    void chosen(const QString& role);
    /// A menu is about to be shown.
    void opening(const QString& role);

private:
    void add(const Entry& entry);
    /// The menu with this name; the empty name means the top level, which is
    /// the menu bar until there is a context menu.
    QMenu* menu(const QString& name) const;

    QMainWindow* m_frame;
    QMenu* m_context = nullptr;
    QHash<QString, QAction*> m_items;
    QMultiHash<QString, QAction*> m_byRole;
};
