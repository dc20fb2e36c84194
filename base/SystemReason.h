#pragma once

#include <string>

/// What the system means by an error number (`errno`), in German where it is one that a
/// user meets, else in the system's own words. UTF-8. Plain C++: a second start, which
/// loads no Qt, says it too.
std::string systemReason(int code);
