#include "pages/asking/PageTextLabel.h"

#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>

namespace {

/// `text` with line breaks inside words that are wider than `width`.
QString broken(const QString& text, const QFontMetrics& metrics, int width)
{
    QString result;
    int used = 0;
    for (const QChar c : text) {
        const int advance = metrics.horizontalAdvance(c);
        if (c.isSpace()) {
            used = 0;
        } else if (used + advance > width && !c.isLowSurrogate()) {
            result += QLatin1Char('\n');
            used = advance;
        } else {
            used += advance;
        }
        result += c;
    }
    return result;
}

} // namespace

PageTextLabel::PageTextLabel(const QString& text, QWidget* parent) : QLabel(parent)
{
    constexpr int charactersPerLine = 70;
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setFixedWidth(fontMetrics().averageCharWidth() * charactersPerLine);
    setText(broken(text, fontMetrics(), width()));
    setMinimumHeight(std::max(0, heightForWidth(width())));
}

QWidget* PageTextLabel::fitted()
{
    constexpr int roomForOthers = 200; // what the dialog has besides, and its borders
    constexpr int least = 100;
    const int room = std::max(screen()->availableSize().height() - roomForOthers, least);
    if (minimumHeight() <= room)
        return this;
    auto* const area = new QScrollArea(parentWidget());
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    area->setAccessibleName(text());
    area->setWidget(this);
    area->setFixedSize(width() + area->verticalScrollBar()->sizeHint().width(), room);
    return area;
}
