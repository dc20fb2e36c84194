#pragma once

#include <QByteArray>

/// Has the engine start with the flag, unless the user has set it in the environment
/// already. To be called before the first profile, while there are no other threads yet
/// that read the environment.
void addEngineFlag(const QByteArray& name, const QByteArray& value = {});
