#pragma once

#include "pages/viewing/PageMenuItems.h"

#include <QHash>

#include <functional>

class QMenu;
class QWidget;

/// What the items of a page's menu do. An item without a command is not shown.
struct PageMenuCommands {
    QHash<PageMenuItem, std::function<void()>> items;
    /// Puts a suggestion in the place of the misspelled word.
    std::function<void(const QString& word)> correct;
    /// Searches the web for the text that is selected.
    std::function<void(const QString& text)> search;
    /// Whether an item is shown disabled; may be empty.
    std::function<bool(PageMenuItem)> isDisabled;
};

/// The menu for a place of a page; the object name of an item is "mn_" and its enumerator.
/// It belongs to `parent`. Never null; empty when nothing is offered.
QMenu* makePageMenu(QWidget* parent, const PageMenuTarget& target,
                    const PageMenuCommands& commands);
