#include "base/ElidedLabel.h"

#include "base/ShownText.h"

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
    const QString whole = oneLineText(m_text);
    setText(fontMetrics().elidedText(whole, Qt::ElideMiddle, contentsRect().width(),
                                     Qt::TextSingleLine));
    setToolTip(text() == whole ? QString() : plainToolTip(whole));
}
