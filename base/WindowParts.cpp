#include "base/WindowParts.h"

#include <QGridLayout>
#include <QLabel>
#include <QPalette>
#include <QPushButton>

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

QPushButton* makeButton(const QString& name, const QString& caption, const QString& toolTip)
{
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    button->setAutoDefault(false);
    return button;
}

void addLabel(QGridLayout& grid, int row, const QString& name, const QString& caption,
              QWidget* buddy, Qt::Alignment alignment)
{
    auto* label = new QLabel(caption);
    label->setObjectName(name);
    label->setBuddy(buddy);
    grid.addWidget(label, row, 0, alignment);
}
