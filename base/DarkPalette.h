#pragma once

#include <QPalette>

/// Whether the desktop's colours are light on dark.
inline bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}
