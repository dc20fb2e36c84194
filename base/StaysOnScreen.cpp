#include "base/StaysOnScreen.h"

#include <QEvent>
#include <QScreen>
#include <QWidget>

#include <algorithm>

StaysOnScreen::StaysOnScreen(QWidget* window) : QObject(window), m_window(window)
{
    window->installEventFilter(this);
}

bool StaysOnScreen::eventFilter(QObject* watched, QEvent* event)
{
    // Later: until then the window manager has not answered.
    if (event->type() == QEvent::Resize)
        QMetaObject::invokeMethod(this, &StaysOnScreen::moveBack, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

void StaysOnScreen::moveBack()
{
    if (!m_window->isVisible())
        return;
    const QRect screen = m_window->screen()->availableGeometry();
    const QRect frame = m_window->frameGeometry();
    const int over = std::max(frame.right() - screen.right(), 0);
    const int under = std::max(frame.bottom() - screen.bottom(), 0);
    const QPoint corner(std::max(frame.left() - over, screen.left()),
                        std::max(frame.top() - under, screen.top()));
    if (over > 0 || under > 0)
        m_window->move(corner);
}
