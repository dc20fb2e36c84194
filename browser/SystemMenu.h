#pragma once

#include "browser/KeyboardPlace.h"

#include <functional>

class QMdiSubWindow;

/// Gives the system menu of a browser window German captions with access keys that all
/// differ, whatever the toolkit's translation says, and takes away the keys of its items:
/// the frame has keys of its own for closing and walking the windows. The items for moving
/// and sizing call `place` in the place of what the toolkit does, which needs a pointer
/// that a program may move.
void settleSystemMenu(QMdiSubWindow& window, const std::function<void(Placing)>& place);
