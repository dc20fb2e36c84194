#include "engine/DarkPages.h"

#include "base/WindowParts.h"
#include "engine/EngineFlags.h"

#include <QGuiApplication>
#include <QPalette>

void announceDarkDesktop()
{
    // The engine does not ask the toolkit (6.4). 0 is its number for dark.
    if (isDark(QGuiApplication::palette()))
        addPageSwitch("preferredColorScheme=0");
}
