#include "base/ElidedLabel.h"

ElidedLabel::ElidedLabel(const QString& name, QWidget* parent) : QLabel(parent)
{
    setObjectName(name);
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void ElidedLabel::showText(const QString& text)
{
    m_text = text;
    elide();
}

void ElidedLabel::resizeEvent(QResizeEvent* event)
{
    elide();
    QLabel::resizeEvent(event);
}

void ElidedLabel::elide()
{
    constexpr qsizetype visibleAtMost = 1000; // a link can be as long as a picture
    setText(fontMetrics().elidedText(m_text.left(visibleAtMost), Qt::ElideMiddle,
                                     contentsRect().width(), Qt::TextSingleLine));
}
