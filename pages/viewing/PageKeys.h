#pragma once

#include <QShortcut>
#include <QWidget>

/// Makes each of `keys` call `action` while the focus is in `widget` or below it. The keys go
/// with the widget or with `receiver`, whichever goes first.
template <typename Action>
void addPageKeys(QWidget* widget, const QList<QKeySequence>& keys, const QObject* receiver,
                 Action action)
{
    auto* const shortcut = new QShortcut(widget);
    shortcut->setKeys(keys);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(shortcut, &QShortcut::activated, receiver, action);
    QObject::connect(receiver, &QObject::destroyed, shortcut, &QObject::deleteLater);
}
