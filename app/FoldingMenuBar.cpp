#include "app/FoldingMenuBar.h"

void FoldingMenuBar::fold(bool isFolded)
{
    m_isFolded = isFolded;
    updateGeometry();
}

QSize FoldingMenuBar::sizeHint() const
{
    const QSize unfolded = QMenuBar::sizeHint();
    return m_isFolded ? QSize(unfolded.width(), 0) : unfolded;
}

QSize FoldingMenuBar::minimumSizeHint() const
{
    const QSize unfolded = QMenuBar::minimumSizeHint();
    return m_isFolded ? QSize(unfolded.width(), 0) : unfolded;
}

int FoldingMenuBar::heightForWidth(int width) const
{
    return m_isFolded ? 0 : QMenuBar::heightForWidth(width);
}
