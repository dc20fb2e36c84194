#pragma once

#include <QHash>
#include <QKeySequence>
#include <QObject>
#include <QStringView>

class QAction;
class QMainWindow;
class QWidget;

/// A row of the table that a window's menus are built from.
struct MenuEntry {
    enum class Kind { Menu, Item, CheckItem, Separator };

    QStringView name;
    QStringView caption;
    /// The menu it belongs to, which stands before it; empty for the top level.
    QStringView under;
    Kind kind = {};
    /// The name that the signals carry; empty: the item's own.
    QStringView role = {};

    QString reportedRole() const { return (role.isEmpty() ? name : role).toString(); }
};

/// The menus of a window, whose items are found, and report, by their names. It
/// knows nothing of the commands.
class NamedMenus : public QObject {
    Q_OBJECT
public:
    /// The item or menu with this name; null if there is none.
    QAction* item(const QString& name) const { return m_items.value(name); }

signals:
    /// The user has chosen an item.
    void chosen(const QString& role);
    /// A menu is about to be shown.
    void opening(const QString& role);

protected:
    /// Belongs to the window.
    explicit NamedMenus(QMainWindow* window);

    /// Adds an item; `top` is the menu, or the menu bar, of the top level.
    QAction* add(const MenuEntry& entry, QWidget* top);
    /// Shows beside the item which key does the same. The key itself is somebody else's.
    void showKey(const QString& name, const QKeySequence& key);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QHash<QString, QAction*> m_items;
    QList<QKeySequence> m_shownKeys;
};
