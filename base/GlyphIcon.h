#pragma once

#include <QIcon>

/// An icon drawn from one of the line glyphs in the resources (name without
/// folder and suffix). It takes the text colour of the palette in force when it
/// is painted, so that it stays legible on dark, and is sharp at any scale.
QIcon glyphIcon(const QString& name);

/// An icon that has colours of its own, by its name in the resources' icons without suffix;
/// sharp at any scale, too.
QIcon colouredIcon(const QString& name);
