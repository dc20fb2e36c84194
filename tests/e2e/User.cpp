#include "tests/e2e/User.h"

#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QScreen>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

QString outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

QString tool(const QStringList& arguments)
{
    return outputOf(u"xdotool"_s, arguments);
}

QStringList windowsOf(const QString& title)
{
    const QString pattern = u'^' + QRegularExpression::escape(title) + u'$';
    return tool({u"search"_s, u"--onlyvisible"_s, u"--name"_s, pattern})
        .split(u'\n', Qt::SkipEmptyParts);
}

QString windowOf(const QString& title)
{
    return windowsOf(title).value(0);
}

QPixmap picture()
{
    return QGuiApplication::primaryScreen()->grabWindow(0);
}

} // namespace

bool User::sees(const QString& title)
{
    return !windowOf(title).isEmpty();
}

int User::count(const QString& title)
{
    return int(windowsOf(title).size());
}

QRect User::place(const QString& title)
{
    QString window;
    if (!QTest::qWaitFor([&] { return !(window = windowOf(title)).isEmpty(); }))
        return {};
    QHash<QString, int> values;
    const QString geometry = tool({u"getwindowgeometry"_s, u"--shell"_s, window});
    for (const QString& line : geometry.split(u'\n'))
        values.insert(line.section(u'=', 0, 0), line.section(u'=', 1).toInt());
    return {values[u"X"_s], values[u"Y"_s], values[u"WIDTH"_s], values[u"HEIGHT"_s]};
}

QColor User::colourAt(const QPoint& place)
{
    return picture().toImage().pixelColor(place);
}

QString User::property(const QString& title, const QString& name)
{
    const QString window = windowOf(title);
    if (name.isEmpty() || window.isEmpty())
        return window;
    return outputOf(u"xprop"_s, {u"-id"_s, window, name}).section(u'=', 1).trimmed();
}

void User::press(const QString& keys)
{
    tool(QStringList{u"key"_s, u"--delay"_s, u"250"_s} + keys.split(u' '));
}

void User::enter(const QString& text)
{
    tool({u"type"_s, u"--delay"_s, u"15"_s, text});
    press(u"Return"_s);
}

void User::click(const QPoint& place, int times)
{
    moveTo(place);
    tool({u"click"_s, u"--repeat"_s, QString::number(times), u"--delay"_s, u"80"_s, u"1"_s});
}

void User::moveTo(const QPoint& place)
{
    // Not to be waited for: a pointer that is there already never moves.
    tool({u"mousemove"_s, QString::number(place.x()), QString::number(place.y())});
}

void User::drag(const QPoint& from, const QPoint& to)
{
    constexpr int steps = 12;
    moveTo(from);
    tool({u"mousedown"_s, u"1"_s});
    for (int i = 1; i <= steps; ++i) {
        moveTo(from + (to - from) * i / steps);
        QTest::qWait(60);
    }
    QTest::qWait(300);
    tool({u"mouseup"_s, u"1"_s});
}

void User::minimise(const QString& title)
{
    tool({u"windowminimize"_s, u"--sync"_s, windowOf(title)});
}

void User::resize(const QString& title, const QSize& size)
{
    tool({u"windowsize"_s, u"--sync"_s, windowOf(title), QString::number(size.width()),
          QString::number(size.height())});
}

void User::move(const QString& title, const QPoint& place)
{
    tool(
        {u"windowmove"_s, windowOf(title), QString::number(place.x()), QString::number(place.y())});
}

void User::keepPictureOfFailure()
{
    if (!QTest::currentTestFailed())
        return;
    const QString folder = QCoreApplication::applicationDirPath() + u"/failures"_s;
    QDir().mkpath(folder);
    const QString file =
        folder + u'/' + QString::fromLatin1(QTest::currentTestFunction()) + u".png"_s;
    if (picture().save(file, nullptr, 100)) // 100: the quickest way
        qInfo("The display as it was: %s", qPrintable(file));
}
