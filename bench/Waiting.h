#pragma once

#include <functional>

/// Runs the event loop until something has happened, at most so long; returns
/// whether it has. A loop that sleeps between its looks would starve the engine.
bool runUntil(const std::function<bool()>& happened, int milliseconds);

/// Runs the event loop.
void runFor(int milliseconds);
