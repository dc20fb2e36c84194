#pragma once

#include <QByteArray>

class QWidget;

/// What a desktop wants to hear when a start of the program is over, and what it lets a
/// window come to the front for. The first start's own is the toolkit's business; these
/// are for a start that hands over to the running copy. Without a display it does nothing.
namespace startupNotice {

/// Makes room for later tokens; to be called while the process has one thread.
void prepare();

/// Lets the desktop bring the window to the front: under Wayland by the token, which
/// takes effect when the window is activated next, under X11 by the time of the user's
/// action, which the id ends with.
void letToFront(const QWidget& window, const QByteArray& activationToken,
                const QByteArray& startupId);

/// The start is over: the pointer need no longer show that something is starting (X11).
void end(const QByteArray& startupId);

} // namespace startupNotice
