#include "app/FrameStatusBar.h"

#include "base/ElidedLabel.h"

#include <QLabel>

using namespace Qt::StringLiterals;

FrameStatusBar::FrameStatusBar(QWidget* parent)
    : QStatusBar(parent), m_panel3(new ElidedLabel(u"panel3"_s, this))
{
    setObjectName(u"StatusBar1"_s);
    setAccessibleName(u"Status-Zeile"_s);
    for (const auto& name : {u"panel1"_s, u"panel2"_s}) {
        auto* empty = new QLabel(this);
        empty->setObjectName(name);
        empty->setFixedWidth(0);
        addPermanentWidget(empty);
    }
    addPermanentWidget(m_panel3, 1);
}

void FrameStatusBar::panelText(const QString& text)
{
    m_panel3->showText(text);
}
