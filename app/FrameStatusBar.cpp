#include "app/FrameStatusBar.h"

#include <QEvent>
#include <QLabel>

using namespace Qt::StringLiterals;

FrameStatusBar::FrameStatusBar(QWidget* parent) : QStatusBar(parent), m_panel3(new QLabel(this))
{
    setObjectName(u"StatusBar1"_s);
    for (const auto& name : {u"panel1"_s, u"panel2"_s}) {
        auto* empty = new QLabel(this);
        empty->setObjectName(name);
        empty->setFixedWidth(0);
        addPermanentWidget(empty);
    }
    m_panel3->setObjectName(u"panel3"_s);
    m_panel3->setTextFormat(Qt::PlainText);
    m_panel3->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_panel3->installEventFilter(this);
    addPermanentWidget(m_panel3, 1);
}

void FrameStatusBar::panelText(const QString& text)
{
    m_text = text;
    showText();
}

bool FrameStatusBar::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_panel3 && event->type() == QEvent::Resize)
        showText();
    return QStatusBar::eventFilter(watched, event);
}

void FrameStatusBar::showText()
{
    constexpr qsizetype visibleAtMost = 1000; // a link can be as long as a picture
    const int room = m_panel3->contentsRect().width();
    m_panel3->setText(m_panel3->fontMetrics().elidedText(
        m_text.left(visibleAtMost), Qt::ElideMiddle, room, Qt::TextSingleLine));
}
