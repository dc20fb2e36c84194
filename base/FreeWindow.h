#pragma once

#include <qnamespace.h>

/// The flags of a free window that its owner does not cover, so that one can drag
/// between the two. To window managers only a dialog is one of these.
constexpr Qt::WindowFlags freeWindow = Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                       Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint;
