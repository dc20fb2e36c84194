#pragma once

#include <QDBusServiceWatcher>

/// Where the toolkit has the portal of desktops show its file dialogs, closes the one that is
/// open when the portal goes: nobody would answer any more, and the program would wait for ever
/// (seen with Qt 6.4). Until the portal comes back the toolkit shows its own.
class DialogPortal : public QObject {
    Q_OBJECT
public:
    DialogPortal();

private:
    QDBusServiceWatcher m_watcher;
};
