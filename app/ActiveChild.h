#pragma once

#include <QObject>

class QMdiArea;
class QMdiSubWindow;
class frmBrowser;

/// Decides which browser window of the frame's area is the active one, where the toolkit
/// would take the first one made.
class ActiveChild : public QObject {
    Q_OBJECT
public:
    /// Owned by `area`.
    explicit ActiveChild(QMdiArea& area);

    /// From now on the window gives way to another when it is minimised.
    void watch(QMdiSubWindow& window);
    /// Activates a window that the user has chosen; restores it when it is minimised, and
    /// moves it back when its title bar is out of reach.
    void choose(QMdiSubWindow& window);
    /// Chooses the next window in the order in which they were made, or the one before.
    void chooseNext();
    void choosePrevious();
    /// Activates another window in the place of one that is about to go: the window
    /// whose page has opened it, or the one used last. Does nothing for a window that
    /// is not the active one.
    void replace(const frmBrowser& closing);

private:
    void chooseBeside(int step);
    /// The window used last before `window` that is not minimised, or null.
    QMdiSubWindow* usedBefore(const QMdiSubWindow& window) const;
    static bool canBeSeen(const QMdiSubWindow& window);

    QMdiArea& m_area;
};
