#pragma once

#include <QShortcut>

/// Makes the keys do `step` while the focus is in `widget` or below it. They go
/// with the widget or with `receiver`, whichever goes first.
template <typename Step>
void addPageKeys(QWidget* widget, const QList<QKeySequence>& keys, const QObject* receiver,
                 Step step)
{
    auto* const shortcut = new QShortcut(widget);
    shortcut->setKeys(keys);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(shortcut, &QShortcut::activated, receiver, step);
    QObject::connect(receiver, &QObject::destroyed, shortcut, &QObject::deleteLater);
}
