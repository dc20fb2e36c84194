#include "browser/services/OverPage.h"

#include <QEvent>
#include <QWidget>

OverPage::OverPage(QWidget* widget, std::function<void()> place)
    : QObject(widget), m_widget(widget), m_place(std::move(place))
{
    widget->parentWidget()->installEventFilter(this);
    m_place();
}

bool OverPage::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        m_place();
    else if (event->type() == QEvent::ChildAdded)
        QMetaObject::invokeMethod(m_widget, &QWidget::raise, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}
