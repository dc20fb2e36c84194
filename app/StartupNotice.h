#pragma once

#include <QByteArray>

class QWidget;

/// Tells the desktop that a second start of the program is over, and has it let a window of
/// the running copy come to the front. (Qt does both for a first start.) Without a
/// display nothing happens.
namespace startupNotice {

/// Whether the program's windows are shown under Wayland.
bool isWayland();

/// Makes room in the environment for the tokens of second starts; to be called while the
/// process has one thread.
void prepare();

/// Lets the desktop bring the window to the front: under Wayland by the token, which
/// takes effect when the window is activated next, under X11 by the time of the user's
/// action, which the id ends with.
void letToFront(const QWidget& window, const QByteArray& activationToken,
                const QByteArray& startupId);

/// Whether no window has been activated with the last token yet (Wayland).
bool isTokenLeft();

/// The start is over: the pointer need no longer show that something is starting (X11).
void end(const QByteArray& startupId);

} // namespace startupNotice
