#pragma once

#include <QObject>

/// Lets Shift+F10 do what the menu key does, in all windows of the program: Qt knows
/// only the menu key. Pages handle the key themselves.
class ContextMenuKey : public QObject {
    Q_OBJECT
public:
    /// Belongs to the application.
    explicit ContextMenuKey(QObject* application);

    bool eventFilter(QObject* watched, QEvent* event) override;
};
