#include "pages/viewing/OverlayPlacer.h"

#include <QEvent>
#include <QWidget>

QWidget* OverlayPlacer::parentFor(QWidget* page)
{
    return page->isWindow() ? page : page->parentWidget();
}

bool OverlayPlacer::isOver(const QWidget* widget, const QWidget* page)
{
    const auto* const over = widget == nullptr ? nullptr : widget->findChild<OverlayPlacer*>();
    return over != nullptr && over->m_page == page;
}

OverlayPlacer::OverlayPlacer(QWidget* page, QWidget* widget,
                             std::function<void(const QRect&)> place)
    : QObject(widget), m_page(page), m_widget(widget), m_place(std::move(place))
{
    page->installEventFilter(this);
    connect(page, &QObject::destroyed, widget, [widget] { delete widget; });
    OverlayPlacer::place();
}

void OverlayPlacer::place()
{
    m_place(m_widget->parentWidget() == m_page ? m_page->rect() : m_page->geometry());
}

bool OverlayPlacer::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Move)
        place();
    else if (event->type() == QEvent::ChildAdded)
        QMetaObject::invokeMethod(m_widget, &QWidget::raise, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}
