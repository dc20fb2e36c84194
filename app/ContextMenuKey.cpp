#include "app/ContextMenuKey.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QWidget>

namespace {
bool isContextMenuKey(const QEvent& event)
{
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_F10 && key.modifiers() == Qt::ShiftModifier;
}
} // namespace

ContextMenuKey::ContextMenuKey(QObject* application) : QObject(application)
{
    application->installEventFilter(this);
}

bool ContextMenuKey::eventFilter(QObject* watched, QEvent* event)
{
    if (!isContextMenuKey(*event))
        return false;
    // The window is the last to get a key: no widget in it has taken it.
    auto* const window = qobject_cast<QWidget*>(watched);
    if (window == nullptr || !window->isWindow() || QApplication::activePopupWidget() != nullptr)
        return false;
    QWidget* const focus = window->focusWidget() != nullptr ? window->focusWidget() : window;
    const QPoint place = focus->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent wanted(QContextMenuEvent::Keyboard, place, focus->mapToGlobal(place));
    QCoreApplication::sendEvent(focus, &wanted);
    return true;
}
