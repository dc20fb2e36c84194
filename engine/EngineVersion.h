#pragma once

#include <string>

/// Which engine the program runs with on this machine, by the libraries that are loaded: its
/// version, that of Chromium within it, and up to which version of Chromium faults that
/// concern its safety have been mended. Two German lines with their ends.
std::string engineVersionText();
