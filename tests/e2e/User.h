#pragma once

#include "tests/e2e/Desk.h"

#include <QCoreApplication>
#include <QtTest>

/// Somebody in front of the display: looks at windows and pixels, and works with
/// real keys and clicks. Sees every program on the display, so one runs at a time.
class User {
public:
    /// Whether a window with exactly this title is to be seen.
    static bool sees(const QString& title) { return count(title) > 0; }
    /// How many windows have exactly this title.
    static int count(const QString& title) { return int(desk().windows(title).size()); }
    /// The place of that window's content on the display, in pixels; empty if there is none.
    static QRect place(const QString& title)
    {
        const bool isThere = QTest::qWaitFor([&] { return sees(title); });
        return isThere ? desk().placeOf(window(title)) : QRect();
    }
    /// The title of the window that has the keys.
    static QString activeWindow() { return desk().titleOf(desk().active()); }
    static QColor colourAt(const QPoint& place) { return desk().picture().pixelColor(place); }
    static QString clipboard() { return desk().clipboard(); }

    /// Presses keys one after the other, as "ctrl+l Tab Return". Each comes when the program
    /// has handled the one before, so that a menu has opened before its next key comes.
    static void press(const QString& keys)
    {
        const QStringList all = keys.split(u' ');
        for (const QString& key : all) {
            desk().press(key);
            QTest::qWait(pageTime);
            desk().awaitAnswer();
        }
    }
    static void type(const QString& text) { desk().type(text); }
    /// Types a text and ends it with Enter.
    static void enter(const QString& text)
    {
        type(text);
        press(QStringLiteral("Return"));
    }
    /// Enters an address, or words to look for, in the address line.
    static void typeAddress(const QString& typed)
    {
        press(QStringLiteral("ctrl+l"));
        enter(typed);
    }
    static void click(const QPoint& place, int times = 1, int button = 1)
    {
        moveTo(place);
        for (int i = 0; i < times; ++i) {
            QTest::qWait(i == 0 ? 0 : 80);
            desk().hold(button, true);
            desk().hold(button, false);
        }
    }
    static void moveTo(const QPoint& place) { desk().moveTo(place); }
    /// Moves the mouse with the left button held, slowly enough for every window underway to
    /// answer; rests for a moment before it lets go.
    static void drag(const QPoint& from, const QPoint& to)
    {
        moveTo(from);
        desk().hold(1, true);
        pull(from, to);
    }
    /// The same for what a program lets be carried away. A page's process has to be asked first
    /// what there is, so the way is gone on when the program says that something is carried. It
    /// rests at each of the places `over` which it goes.
    static void carry(const QPoint& from, const QPoint& to, const QList<QPoint>& over = {})
    {
        constexpr int begin = 16; // pixels, more than a hand trembles
        desk().forgetDrag();
        moveTo(from);
        desk().hold(1, true);
        QTest::qWait(pageTime);
        moveTo(from + QPoint(begin, 0));
        if (!desk().awaitDrag(from + QPoint(begin, 0)))
            qWarning("Nothing is dragged.");
        pull(from, to, over);
        desk().awaitAnswer();
        QTest::qWait(pageTime); // the page hears that it is over
    }
    static bool minimise(const QString& title) { return desk().minimise(window(title)); }
    static void resize(const QString& title, const QSize& size)
    {
        desk().resize(window(title), size);
    }
    static void move(const QString& title, const QPoint& place)
    {
        desk().move(window(title), place);
    }

    /// Saves a picture of the display beside the test programs when the running
    /// test has failed.
    static void keepPictureOfFailure()
    {
        if (!QTest::currentTestFailed())
            return;
        const QDir folder(QCoreApplication::applicationDirPath() + QStringLiteral("/failures"));
        const QString file =
            folder.filePath(QLatin1String(QTest::currentTestFunction()) + QStringLiteral(".png"));
        if (folder.mkpath(QStringLiteral(".")) &&
            desk().picture().save(file, nullptr, 100)) // the quickest
            qInfo("The display as it was: %s", qPrintable(file));
    }

private:
    /// What a page gets of a key goes through another process, in milliseconds.
    static constexpr int pageTime = 100;

    static void pull(QPoint from, const QPoint& to, const QList<QPoint>& over = {})
    {
        constexpr int steps = 12;
        for (const QPoint& place : over + QList<QPoint>{to}) {
            for (int i = 1; i <= steps; ++i) {
                moveTo(from + (place - from) * i / steps);
                QTest::qWait(60);
            }
            QTest::qWait(place == to ? 300 : 800);
            from = place;
        }
        desk().hold(1, false);
    }
    static QString window(const QString& title) { return desk().windows(title).value(0); }
    static Desk& desk() { return Desk::here(); }
};
