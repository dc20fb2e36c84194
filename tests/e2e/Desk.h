#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QStringList>

/// A display with the windows on it, its keys and its mouse, as whoever sits in front of it has
/// them. Windows are named by what the display calls them; places and sizes are in pixels.
class Desk {
public:
    /// The one that the test was started on: of X11 or of Wayland.
    static Desk& here();
    Desk() = default;
    virtual ~Desk() = default;
    Q_DISABLE_COPY_MOVE(Desk)

    /// All windows, seen or not.
    virtual QStringList windows() const = 0;
    /// Those to be seen that have exactly this title.
    virtual QStringList windows(const QString& title) const = 0;
    /// The window that has the keys; empty if none has.
    virtual QString active() const = 0;
    virtual QString titleOf(const QString& window) const = 0;
    /// Where its content is.
    virtual QRect placeOf(const QString& window) const = 0;
    virtual QImage picture() const = 0;
    virtual QString clipboard() const = 0;
    virtual void clearClipboard() = 0;

    /// Presses keys together, as "ctrl+l".
    virtual void press(const QString& keys) = 0;
    virtual void type(const QString& text) = 0;
    virtual void moveTo(const QPoint& place) = 0;
    /// Holds a button of the mouse, counted from 1, or lets it go.
    virtual void hold(int button, bool isHeld) = 0;
    /// Waits until the program has worked off what it was sent, as far as that can be known.
    virtual void awaitAnswer() = 0;
    /// From now on nobody drags anything.
    virtual void forgetDrag() {}
    /// Waits until something is dragged, with the mouse near the place; whether that has come.
    virtual bool awaitDrag(const QPoint& near) = 0;

    /// Whether the display has such a thing.
    virtual bool minimise(const QString& window) = 0;
    virtual void resize(const QString& window, const QSize& size) = 0;
    virtual void move(const QString& window, const QPoint& place) = 0;

protected:
    /// What a program writes that ends soon.
    static QByteArray outputOf(const QString& program, const QStringList& arguments);
};
