#pragma once

#include "base/NamedMenus.h"

class ArchiveView;
class QPoint;

/// The menus of the archive window. What is selected in the tree decides which items of a
/// menu are enabled when it opens.
class ArchiveMenus : public NamedMenus {
    Q_OBJECT
public:
    /// Fills the window's menu bar and belongs to the window, as `view` does.
    ArchiveMenus(QMainWindow* window, const ArchiveView& view);

    /// Shows "&Modifizieren" at a place on the screen with what fits the selection,
    /// and returns when it is closed again; does nothing while nothing is selected.
    void popUp(const QPoint& globalPos);
    /// The same menu with all that is in it, whatever is selected.
    void popUpWhole(const QPoint& globalPos);

private:
    void update(const QString& menu);

    const ArchiveView& m_view;
};
