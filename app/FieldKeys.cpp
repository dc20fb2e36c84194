#include "app/FieldKeys.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>

FieldKeys::FieldKeys(QWidget& frame) : QObject(&frame), m_frame(frame)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool FieldKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride)
        return false;
    const auto* const widget = qobject_cast<QWidget*>(watched);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (widget == nullptr || widget->window() != &m_frame ||
        QKeySequence(key.keyCombination()) != pageToArchive())
        return false;
    event->ignore(); // nobody wants it for himself: the shortcut gets it
    return true;
}
