#pragma once

#include <cstddef>

/// What the program needs to run with a few windows, in descriptors (files, sockets and
/// the like that a process has open at a time).
constexpr std::size_t leastDescriptors = 160;
/// What a window may take until its page is there: its pipes to the engine's processes,
/// the page's connections. The engine ends the program when it gets none for a pipe.
constexpr std::size_t descriptorsOfAWindow = 64;

/// Raises this process's limit of descriptors as far as it may be raised, and returns it.
/// Programs that are started from here inherit it.
std::size_t raiseDescriptorLimit();

/// How many descriptors this process may still open.
std::size_t freeDescriptors();
