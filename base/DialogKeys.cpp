#include "base/DialogKeys.h"

#include <QKeyEvent>
#include <QWidget>

namespace {
bool isPlain(const QKeyEvent& event)
{
    return !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}
} // namespace

bool isEnterKey(const QKeyEvent& event)
{
    return (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) && isPlain(event);
}

bool isEscapeKey(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Escape && isPlain(event);
}

DialogKeys::DialogKeys(QWidget* dialog) : QObject(dialog) {}

void DialogKeys::set(QWidget* control, const Action& enter, const Action& escape)
{
    m_keys.insert(control, {enter, escape});
    control->installEventFilter(this);
}

bool DialogKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    const Keys keys = m_keys.value(watched); // a copy: the action may end the dialog
    const Action action = isEnterKey(*key)    ? keys.enter
                          : isEscapeKey(*key) ? keys.escape
                                              : Action();
    if (!action)
        return false;
    action();
    return true;
}
