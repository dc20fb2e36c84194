#pragma once

#include <cstddef>

/// How many descriptors (files, sockets and the like that a process has open at a time) the
/// program needs to run with a few windows.
constexpr std::size_t leastDescriptors = 160;
/// How many a window may need until its page has loaded: for pipes to the engine's
/// processes and the page's connections. The engine aborts when it gets none for a pipe.
constexpr std::size_t descriptorsOfAWindow = 64;

/// Raises this process's limit of descriptors as far as it may be raised, and returns it.
/// Programs that are started from here inherit it.
std::size_t raiseDescriptorLimit();

/// How many descriptors this process may still open.
std::size_t freeDescriptors();
