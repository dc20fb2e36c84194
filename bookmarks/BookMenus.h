#pragma once

#include "bookmarks/ArchiveMenuStates.h"

#include <QHash>
#include <QObject>

class QAction;
class QMainWindow;
class QMenu;

/// The menu bar of the archive window. It knows nothing of the commands.
class BookMenus : public QObject {
    Q_OBJECT
public:
    /// Fills the window's menu bar and belongs to the window.
    explicit BookMenus(QMainWindow* window);

    /// The item or menu with this name; never null for the published names.
    QAction* item(const QString& name) const { return m_items.value(name); }
    void set(const std::vector<MenuState>& states);
    /// Shows "&Modifizieren" at a place on the screen with what fits the selection,
    /// and returns when it is closed again.
    void popUp(ArchiveSelection selection, const QPoint& globalPos);
    /// The same menu with all that is in it.
    void popUpWhole(const QPoint& globalPos);

signals:
    /// The user has chosen the item.
    void chosen(const QString& name);
    /// A menu is about to open.
    void opening(const QString& name);

private:
    struct Entry;
    void add(const Entry& entry);

    QMainWindow* m_window;
    QHash<QString, QAction*> m_items;
};
