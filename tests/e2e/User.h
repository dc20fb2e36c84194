#pragma once

#include "tests/e2e/Answers.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QScreen>
#include <QtTest>

/// Somebody in front of the display: looks at windows and pixels, and works with
/// real keys and clicks. Sees every program on the display, so one runs at a time.
class User {
public:
    /// Whether a window with exactly this title is to be seen.
    static bool sees(const QString& title) { return count(title) > 0; }
    /// How many windows have exactly this title.
    static int count(const QString& title) { return int(windows(title).size()); }
    /// The place of that window's content on the display, in pixels; empty if there is none.
    static QRect place(const QString& title)
    {
        QString id;
        if (!QTest::qWaitFor([&] { return !(id = window(title)).isEmpty(); }))
            return {};
        QHash<QString, int> values;
        const QString geometry = tool("getwindowgeometry --shell", {id});
        for (const QString& line : geometry.split(u'\n'))
            values.insert(line.section(u'=', 0, 0), line.section(u'=', 1).toInt());
        return {values[QStringLiteral("X")], values[QStringLiteral("Y")],
                values[QStringLiteral("WIDTH")], values[QStringLiteral("HEIGHT")]};
    }
    /// The title of the window that has the keys.
    static QString activeWindow() { return tool("getactivewindow getwindowname"); }
    static QColor colourAt(const QPoint& place) { return picture().toImage().pixelColor(place); }
    /// What the display says of the window with exactly this title, as "_NET_WM_STATE"
    /// or "WM_CLASS"; its number where `name` is empty.
    static QString property(const QString& title, const QString& name)
    {
        const QString id = window(title);
        if (name.isEmpty() || id.isEmpty())
            return id;
        return outputOf("xprop -id", {id, name}).section(u'=', 1).trimmed();
    }

    /// Presses keys one after the other, as "ctrl+l Tab Return". Each comes when the program
    /// has handled the one before, so that a menu has opened before its next key comes.
    static void press(const QString& keys)
    {
        Answers answers;
        const QStringList all = keys.split(u' ');
        for (const QString& key : all) {
            tool("key", {key});
            QTest::qWait(pageTime);
            answers.await(tool("getactivewindow").toUInt());
        }
    }
    static void type(const QString& text) { tool("type --delay 15", {text}); }
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
    static void click(const QPoint& place, int times = 1)
    {
        moveTo(place);
        tool("click --delay 80 --repeat", {QString::number(times), QStringLiteral("1")});
    }
    static void moveTo(const QPoint& place)
    {
        // Not to be waited for: a pointer that is there already never moves.
        tool("mousemove", numbers(place.x(), place.y()));
    }
    /// Moves the mouse with the left button held, slowly enough for every window underway to
    /// answer; rests for a moment before it lets go.
    static void drag(const QPoint& from, const QPoint& to)
    {
        moveTo(from);
        tool("mousedown 1");
        pull(from, to);
    }
    /// The same for what a program lets be carried away. A page's process has to be asked first
    /// what there is, so the way is gone on when the program says that something is carried. It
    /// rests at each of the places `over` which it goes.
    static void carry(const QPoint& from, const QPoint& to, const QList<QPoint>& over = {})
    {
        constexpr int begin = 16; // pixels, more than a hand trembles
        Answers answers;
        answers.forgetDrag();
        moveTo(from);
        tool("mousedown 1");
        QTest::qWait(pageTime);
        moveTo(from + QPoint(begin, 0));
        if (!answers.awaitDrag())
            qWarning("Nothing is dragged.");
        pull(from, to, over);
        answers.await(tool("getactivewindow").toUInt());
        QTest::qWait(pageTime); // the page hears that it is over
    }
    static void minimise(const QString& title) { tool("windowminimize", {window(title)}); }
    static void resize(const QString& title, const QSize& size)
    {
        tool("windowsize --sync",
             QStringList(window(title)) + numbers(size.width(), size.height()));
    }
    static void move(const QString& title, const QPoint& place)
    {
        tool("windowmove", QStringList(window(title)) + numbers(place.x(), place.y()));
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
            picture().save(file, nullptr, 100)) // the quickest
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
        tool("mouseup 1");
    }
    static QString outputOf(const char* command, const QStringList& further)
    {
        const QStringList words = QString::fromLatin1(command).split(u' ');
        QProcess process;
        process.start(words.first(), words.mid(1) + further);
        process.waitForFinished();
        return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    }
    static QString tool(const QByteArray& command, const QStringList& further = {})
    {
        return outputOf("xdotool " + command, further);
    }
    static QStringList numbers(int first, int second)
    {
        return {QString::number(first), QString::number(second)};
    }
    static QStringList windows(const QString& title)
    {
        const QString pattern = u'^' + QRegularExpression::escape(title) + u'$';
        return tool("search --onlyvisible --name", {pattern}).split(u'\n', Qt::SkipEmptyParts);
    }
    static QString window(const QString& title) { return windows(title).value(0); }
    static QPixmap picture() { return QGuiApplication::primaryScreen()->grabWindow(0); }
};
