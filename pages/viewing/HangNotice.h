#pragma once

#include <QFrame>

class OverlayPlacer;
class QLabel;
class QPushButton;

/// Says over a page that it does not answer, and lets the user wait on or end it. What the user
/// types elsewhere stays there: the notice takes the focus only from the page.
class HangNotice : public QFrame {
    Q_OBJECT
public:
    /// Over `view`, with which it goes. It is hidden at first.
    explicit HangNotice(QWidget* view);

    /// `others` are the titles of the pages that would end as well.
    void appear(const QStringList& others);
    /// Leaves the focus, if it has it, to the page.
    void vanish();
    /// The page could not be ended.
    void showFailure();
    /// Takes the focus if the page has it.
    void takeFocus();

signals:
    void waitWanted();
    void endWanted();

private:
    void layOut();
    void place(const QRect& area);

    QWidget* m_view;
    QLabel* m_headline;
    QLabel* m_more;
    QPushButton* m_wait;
    QPushButton* m_end;
    OverlayPlacer* m_placer = nullptr;
};
