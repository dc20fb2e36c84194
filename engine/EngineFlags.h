#pragma once

#include <QByteArray>

/// Has the engine start with the flag, unless the user has set it in the environment
/// already. To be called before the first profile, while there are no other threads yet
/// that read the environment.
void addEngineFlag(const QByteArray& name, const QByteArray& value = {});

/// Sets a switch of the part of the engine that draws pages, as "name=value"; it holds
/// whatever the profile says. When and where as above; other switches that are set stay.
void addPageSwitch(const QByteArray& nameAndValue);
