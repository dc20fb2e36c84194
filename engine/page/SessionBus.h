#pragma once

#include <QDBusConnection>

#include <optional>

/// The bus on which the programs of the desktop talk; nothing where none is running, as the
/// library would start one then and wait for it. It is connected to when it is wanted first.
std::optional<QDBusConnection> sessionBus();
