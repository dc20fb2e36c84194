#pragma once

#include <QtGlobal>

/// Ends the process `pid` at once, whatever it is doing (SIGKILL). It has to be a descendant of
/// this process: any other is left alone, and so is one that has ended while its number has
/// gone to another. False when nothing was ended.
bool endDescendant(qint64 pid);
