#include "browser/services/PageTextLabel.h"

#include <algorithm>

PageTextLabel::PageTextLabel(const QString& text, QWidget* parent) : QLabel(parent)
{
    constexpr int charactersPerLine = 70;
    setTextFormat(Qt::PlainText);
    setText(text);
    setWordWrap(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setFixedWidth(fontMetrics().averageCharWidth() * charactersPerLine);
    setMinimumHeight(std::max(0, heightForWidth(width())));
}
