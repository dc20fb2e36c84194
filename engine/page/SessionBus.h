#pragma once

#include <QDBusConnection>

#include <optional>

/// The bus on which the programs of the desktop talk; nothing where none is running, as the
/// library would start one then and wait for it. It is connected to when it is wanted first.
std::optional<QDBusConnection> sessionBus();

/// Where no bus is running, keeps the library from starting one when the toolkit asks for it (Qt
/// 6.4 does while the first page is made): that holds up the start, and the bus stays behind when
/// the program has ended. Programs that are started from here on are free to start theirs, but a
/// bus that comes later is not found in this run. To be called while no other thread reads the
/// environment.
void startNoSessionBus();
