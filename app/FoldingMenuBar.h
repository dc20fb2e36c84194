#pragma once

#include <QMenuBar>

/// A menu bar that can be folded away and stays at work: its keys go on, and a maximised child
/// keeps its buttons in it. Of a bar that is hidden the toolkit takes all that away, and gives
/// the buttons back only when the child is maximised anew (seen with Qt 6.4).
class FoldingMenuBar : public QMenuBar {
    Q_OBJECT
public:
    using QMenuBar::QMenuBar;

    void fold(bool isFolded);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

private:
    bool m_isFolded = false;
};
