#pragma once

#include <QColor>
#include <QPoint>
#include <QRect>
#include <QString>

/// Somebody in front of the display: looks at windows and pixels, and works with
/// real keys and clicks. Sees every program on the display, so one runs at a time.
class User {
public:
    /// Whether a window with exactly this title is to be seen.
    static bool sees(const QString& title);
    /// How many windows have exactly this title.
    static int count(const QString& title);
    /// The place of that window's content on the display, in pixels; empty if there is none.
    static QRect place(const QString& title);
    static QColor colourAt(const QPoint& place);
    /// What the display says of the window with exactly this title, as "_NET_WM_STATE"
    /// or "WM_CLASS"; its number where `name` is empty.
    static QString property(const QString& title, const QString& name);

    /// Presses keys one after the other, as "ctrl+l Tab Return", so slowly that a menu
    /// has opened before its next key comes.
    static void press(const QString& keys);
    /// Types a text and ends it with Enter.
    static void enter(const QString& text);
    static void click(const QPoint& place, int times = 1);
    static void moveTo(const QPoint& place);
    /// Drags with the left button held, slowly enough for every window underway to
    /// answer; rests for a moment before it lets go.
    static void drag(const QPoint& from, const QPoint& to);
    static void minimise(const QString& title);
    static void resize(const QString& title, const QSize& size);
    static void move(const QString& title, const QPoint& place);

    /// Saves a picture of the display beside the test programs when the running
    /// test has failed.
    static void keepPictureOfFailure();
};
