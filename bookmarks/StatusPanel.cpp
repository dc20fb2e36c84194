#include "bookmarks/StatusPanel.h"

#include <QEvent>
#include <QLabel>

using namespace Qt::StringLiterals;

StatusPanel::StatusPanel(QWidget* parent) : QStatusBar(parent), m_panel(new QLabel(this))
{
    setObjectName(u"StatusBar1"_s);
    m_panel->setObjectName(u"panel1"_s);
    m_panel->setTextFormat(Qt::PlainText);
    m_panel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_panel->installEventFilter(this);
    addPermanentWidget(m_panel, 1);
}

void StatusPanel::panelText(const QString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    showText();
}

bool StatusPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_panel && event->type() == QEvent::Resize)
        showText();
    return QStatusBar::eventFilter(watched, event);
}

void StatusPanel::showText()
{
    constexpr qsizetype visibleAtMost = 1000;
    const int room = m_panel->contentsRect().width();
    m_panel->setText(m_panel->fontMetrics().elidedText(m_text.left(visibleAtMost), Qt::ElideMiddle,
                                                       room, Qt::TextSingleLine));
}
