#include "pages/viewing/OverlayPlacer.h"

#include <QEvent>
#include <QWidget>

QWidget* OverlayPlacer::parentFor(QWidget* view)
{
    return view->isWindow() ? view : view->parentWidget();
}

bool OverlayPlacer::isOver(const QWidget* widget, const QWidget* view)
{
    const auto* const over = widget == nullptr ? nullptr : widget->findChild<OverlayPlacer*>();
    return over != nullptr && over->m_view == view;
}

OverlayPlacer::OverlayPlacer(QWidget* view, QWidget* widget,
                             std::function<void(const QRect&)> place)
    : QObject(widget), m_view(view), m_widget(widget), m_place(std::move(place))
{
    view->installEventFilter(this);
    connect(view, &QObject::destroyed, widget, [widget] { delete widget; });
    OverlayPlacer::place();
}

void OverlayPlacer::place()
{
    m_place(m_widget->parentWidget() == m_view ? m_view->rect() : m_view->geometry());
}

bool OverlayPlacer::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Move)
        place();
    else if (event->type() == QEvent::ChildAdded)
        QMetaObject::invokeMethod(m_widget, &QWidget::raise, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}
