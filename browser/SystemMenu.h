#pragma once

#include "browser/BrowserLayout.h"

#include <QObject>
#include <QPointer>

class QKeyEvent;
class QMdiSubWindow;
class QWidget;

/// The system menu of a browser window: German captions with access keys that all differ,
/// whatever the toolkit's translation says. Its items have no keys of their own, as the frame
/// has keys for closing and walking the windows. "Move" and "Size" work by the arrow keys: the
/// toolkit's own way moves the mouse pointer, which not every desktop lets a program do.
class SystemMenu : public QObject {
    Q_OBJECT
public:
    /// `window` outlives it.
    explicit SystemMenu(QMdiSubWindow& window);

    /// Whether the arrow keys move or size the window; its keys are for `keyPressed` then.
    bool isPlacing() const { return m_placing != Placing::None; }
    void keyPressed(const QKeyEvent& event);
    /// Puts the window back to where it was, as the key Escape does.
    void cancelPlacing();

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// What the keys do at present, for the status line; empty when they do nothing any more.
    void hintChanged(const QString& hint);
    /// The user has ended the placing by a key: the focus may go back to where it was.
    void placed();

private:
    void settleItems();
    void beginPlacing(Placing placing);
    void endPlacing();

    QMdiSubWindow& m_window;
    Placing m_placing = Placing::None;
    QRect m_placeBefore;
    /// Has the focus while the arrow keys move or size the window.
    QPointer<QWidget> m_keyCatcher;
};
