#pragma once

#include <QString>
#include <Qt>

class QGridLayout;
class QPalette;
class QPushButton;
class QWidget;

/// The flags of a free window: it closes with its owner, but can be minimised without it, and
/// whichever of the two is used lies over the other. A dialog would lie over its owner always.
constexpr Qt::WindowFlags freeWindow = Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                       Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint;

/// Whether the desktop's colours are light on dark.
bool isDark(const QPalette& palette);

/// A button that Enter does not press by itself: what Enter does in a dialog is said to
/// its `DialogKeys`.
QPushButton* makeButton(const QString& name, const QString& caption, const QString& toolTip = {});

/// Puts the caption of the control `buddy` into the first column of a row.
void addLabel(QGridLayout& grid, int row, const QString& name, const QString& caption,
              QWidget* buddy, Qt::Alignment alignment = {});
