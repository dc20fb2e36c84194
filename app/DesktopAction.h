#pragma once

#include <QString>

/// What the desktop's menu of the program offers besides its start travels on the command line
/// as one of these words in the place of an address: "tessera:neu", "tessera:archiv",
/// "tessera:historie". Returns the role of the menu item that does it, or an empty text for
/// anything else.
QString roleOfDesktopAction(const QString& address);
