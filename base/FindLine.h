#pragma once

#include "base/FindControls.h"

#include <QTimer>

/// What a `FindLine` searches. Its places have numbers from 0 on, in the order in which they are
/// seen.
class Findable {
public:
    virtual ~Findable() = default;
    /// Looks for `text`, without regard to case, and returns how many places have it.
    virtual int find(const QString& text) = 0;
    /// The place that follows what is selected, or comes before it; at the end it goes on at the
    /// other one. -1 if there is none.
    virtual int beside(bool backwards) const = 0;
    /// Selects a place, and shows it.
    virtual void show(int place) = 0;
};

/// A line for searching at the bottom of a window: typing shows the first place, Enter and F3 the
/// next one, with the Shift key the previous one, Escape closes the line.
class FindLine : public FindControls {
    Q_OBJECT
public:
    /// Belongs to `window`, in which Ctrl+F opens it; `where` names what is searched, for the
    /// user. When it closes, `content` gets the focus. `searched` outlives it.
    FindLine(Findable& searched, const QString& where, QWidget* content, QWidget* window);

    void open();
    /// What is searched has changed: the places are counted anew, but none is selected.
    void searchedChanged();

private:
    void layOut();
    void addKeys(QWidget* window);
    void count();
    void search();
    void step(bool backwards);

    Findable& m_searched;
    int m_count = 0;
    /// Many changes in a row are searched once.
    QTimer m_recount;
};
