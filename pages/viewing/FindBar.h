#pragma once

#include "base/FindControls.h"

class QCheckBox;
class OverlayPlacer;

/// The bar for searching in a page, over its upper right corner. It does not search itself: it
/// asks for each search by a signal, and is told the result.
class FindBar : public FindControls {
    Q_OBJECT
public:
    /// Over `view`, with which it goes. It is hidden at first.
    explicit FindBar(QWidget* view);

    bool isCaseSensitive() const;
    /// Shows the bar, its text selected, with the cursor in it.
    void open();
    /// Asks for the next place, or the previous one.
    void step(bool backwards);
    /// Asks for the text from the beginning, as in a page that has changed. Does nothing while
    /// the bar is hidden.
    void searchAnew();

signals:
    /// `text` is to be searched for. An empty text takes the marks off the page.
    void find(const QString& text, bool backwards, bool caseSensitive);

private:
    void layOut(QWidget* view);
    void textChanged();
    void place(const QRect& area);

    QCheckBox* m_case;
    OverlayPlacer* m_placer = nullptr;
};
