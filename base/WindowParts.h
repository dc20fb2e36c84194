#pragma once

#include <QString>
#include <Qt>

class QGridLayout;
class QPushButton;
class QWidget;

/// A button that only a click presses: Enter is the key table's business.
QPushButton* makeButton(const QString& name, const QString& caption, const QString& toolTip = {});

/// Puts the caption of a control into the first column of a row.
void addLabel(QGridLayout& grid, int row, const QString& name, const QString& caption,
              QWidget* buddy, Qt::Alignment alignment = {});
