#pragma once

#include "app/Arrangement.h"
#include "base/NamedMenus.h"

class FoldingMenuBar;
class QMenu;

/// A menu is as wide as its widest entry.
inline constexpr qsizetype longestListTitle = 60;

/// The caption of a browser window's entry in the window list, counted from 1. The
/// first nine have their number as access key. `title` as QWidget::windowTitle has it; of a
/// long one `longest` letters are shown, among them its last `kept`.
QString windowListEntry(int number, const QString& title, qsizetype longest = longestListTitle,
                        qsizetype kept = 0);

/// The frame's menu bar and its context menu. An item of the context menu has
/// the role of the menu-bar item that does the same; both report under the name
/// of that role, and carry the same check marks.
class FrameMenus : public NamedMenus {
    Q_OBJECT
public:
    /// Builds the menu bar of `frame`; `makerAddress` is the caption of `mn_loomwork`.
    FrameMenus(QMainWindow* frame, const QString& makerAddress);

    QMenu* contextMenu() const { return m_context; }
    /// Folds the menu bar away or brings it back; its keys work all the time.
    void foldBar(bool isFolded);

    /// Sets the check mark, or the enabled state, of both items of a role.
    void check(const QString& role, bool checked);
    void enable(const QString& role, bool enabled);

    /// The arrangement that is checked, asked for in the order rows, cascade, columns.
    Arrangement checkedArrangement() const;
    /// Checks this one of the three and unchecks the others; None unchecks all.
    void checkArrangement(Arrangement mode);

private:
    FoldingMenuBar* m_bar;
    QMenu* m_context = nullptr;
    QMultiHash<QString, QAction*> m_byRole;
};
