#pragma once

#include "browser/EngineControl.h"

#include <QIcon>

/// The icon of a browser window with a loudspeaker on it, crossed out when the page is silenced;
/// the icon as it is when there is nothing to be heard.
QIcon withSoundMark(const QIcon& icon, EngineControl::Sound sound);
