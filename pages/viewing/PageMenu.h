#pragma once

#include "pages/viewing/PageMenuItems.h"

#include <QHash>

#include <functional>

class QMenu;
class QWidget;

/// What the items of a page's menu do. An item that is not here is not shown.
struct PageMenuCommands {
    QHash<PageMenuItem, std::function<void()>> items;
    /// Puts a suggestion in the place of the misspelled word.
    std::function<void(const QString& word)> correct;
    /// Whether a command has nothing to do at the moment; none by default.
    std::function<bool(PageMenuItem)> isIdle;
};

/// The menu for a place of a page, each item named "mn_" and its enumerator.
/// It belongs to `parent`. Never null; empty when nothing is offered.
QMenu* makePageMenu(QWidget* parent, const PageMenuTarget& target,
                    const PageMenuCommands& commands);
