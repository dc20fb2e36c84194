#pragma once

#include <QFrame>

class OverlayPlacer;
class QLabel;
class QProgressBar;
class QPushButton;
class QToolButton;

/// Offers the bookmarks of a page to the archive, at the lower edge of the page, and shows how
/// far they have been read. It never takes the focus by itself.
class BookmarkBar : public QFrame {
    Q_OBJECT
public:
    /// Over `view`, with which it goes. It is hidden at first.
    explicit BookmarkBar(QWidget* view);

    /// `count` bookmarks are offered.
    void offer(int count);
    /// They are being read; so many have been.
    void showProgress(int count);
    void showFailure();
    /// Leaves the focus, if it has it, to the page.
    void vanish();
    /// Gives the focus to what can be pressed, if the bar is to be seen.
    void takeFocus();

signals:
    void taken();
    void stopped();
    /// The user wants nothing of it.
    void closed();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class State { Offering, Reading, Failed };

    void layOut();
    void place(const QRect& area);
    void appear(State state);
    QWidget* firstControl() const;
    void giveUp();

    QWidget* m_view;
    QLabel* m_text;
    QPushButton* m_take;
    QProgressBar* m_progress;
    QPushButton* m_stop;
    QToolButton* m_close;
    OverlayPlacer* m_placer = nullptr;
    State m_state = State::Offering;
};
