#pragma once

#include "base/NamedMenus.h"
#include "bookmarks/ArchiveMenuStates.h"

class QPoint;

/// The menu bar of the archive window.
class BookMenus : public NamedMenus {
    Q_OBJECT
public:
    /// Fills the window's menu bar and belongs to the window.
    explicit BookMenus(QMainWindow* window);

    void set(const std::vector<MenuState>& states);
    /// Shows "&Modifizieren" at a place on the screen with what fits the selection,
    /// and returns when it is closed again.
    void popUp(ArchiveSelection selection, const QPoint& globalPos);
    /// The same menu with all that is in it.
    void popUpWhole(const QPoint& globalPos);
};
