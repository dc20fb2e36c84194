#pragma once

#include "base/Shell.h"

#include <QWidget>

/// While it lives, the frame takes no drops: it goes around every prompt.
class DropsDisabled {
public:
    explicit DropsDisabled(Shell& shell) : m_shell(shell) { m_shell.SetDropDisabled(true); }
    DropsDisabled(const DropsDisabled&) = delete;
    DropsDisabled& operator=(const DropsDisabled&) = delete;
    ~DropsDisabled() { m_shell.SetDropDisabled(false); }

private:
    Shell& m_shell;
};

/// While it lives, the window shows the wait pointer.
class WaitPointer {
public:
    explicit WaitPointer(QWidget* window) : m_window(window) { window->setCursor(Qt::WaitCursor); }
    WaitPointer(const WaitPointer&) = delete;
    WaitPointer& operator=(const WaitPointer&) = delete;
    ~WaitPointer() { m_window->unsetCursor(); }

private:
    QWidget* m_window;
};
