#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

class MDIForm1;
class PageHint;

/// The frame over the whole screen. While it is there, menus and bars are hidden, those of the
/// browser windows too. The upper edge of the screen, or a key that leads to a bar, brings them
/// back until the user turns to a page again.
///
/// Goes by the state of the frame's window, so that it does not matter whether the user or the
/// window manager has changed it. Belongs to the frame.
class FrameFullScreen : public QObject {
    Q_OBJECT
public:
    explicit FrameFullScreen(MDIForm1& frame);

    /// Fills the screen, or gives the frame back its former state.
    void toggle();
    /// Shows menus and bars until the user turns to a page; does nothing without full screen.
    void reveal();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow();
    void hideBars();
    /// Whether the user is busy with a menu or a line of input.
    static bool isInUse();
    bool isOverPage() const;
    /// Hides the bars again a while after the user has turned to a page.
    void watchPointer();

    MDIForm1& m_frame;
    QWidget* m_edge;
    QPointer<PageHint> m_hint;
    QTimer m_awayTimer;
    bool m_isOn = false;
    bool m_isRevealed = false;
};
