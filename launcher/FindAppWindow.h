#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Returns the first of the captions that begins with `prefix`, without regard to
/// case, or `prefix` itself when none does. Of a caption 255 characters count.
/// Texts are UTF-8.
std::string FindAppWindow(std::string_view prefix, const std::vector<std::string>& captions);
