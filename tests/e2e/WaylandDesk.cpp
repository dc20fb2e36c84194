#include "tests/e2e/WaylandDesk.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QtEndian>
#include <QtTest>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 20000;
constexpr quint32 shift = 0xFFE1;

/// A key as X11 numbers what it writes.
quint32 symbolOf(const QString& key, bool isShifted)
{
    if (isShifted && key == "Tab"_L1)
        return 0xFE20;
    if (isShifted && key.size() == 1)
        return key[0].toUpper().unicode();
    static const QHash<QString, quint32> symbols{
        {u"ctrl"_s, 0xFFE3},     {u"shift"_s, shift},   {u"alt"_s, 0xFFE9},
        {u"Return"_s, 0xFF0D},   {u"Tab"_s, 0xFF09},    {u"Escape"_s, 0xFF1B},
        {u"space"_s, ' '},       {u"minus"_s, '-'},     {u"plus"_s, '+'},
        {u"asterisk"_s, '*'},    {u"comma"_s, ','},     {u"period"_s, '.'},
        {u"slash"_s, '/'},       {u"Home"_s, 0xFF50},   {u"Left"_s, 0xFF51},
        {u"Up"_s, 0xFF52},       {u"Right"_s, 0xFF53},  {u"Down"_s, 0xFF54},
        {u"Prior"_s, 0xFF55},    {u"Next"_s, 0xFF56},   {u"End"_s, 0xFF57},
        {u"Menu"_s, 0xFF67},     {u"Delete"_s, 0xFFFF}, {u"Insert"_s, 0xFF63},
        {u"BackSpace"_s, 0xFF08}};
    if (key.size() > 1 && key[0] == u'F')
        return 0xFFBD + key.mid(1).toUInt();
    return symbols.value(key, key.at(0).unicode());
}

bool needsShift(const QString& key)
{
    return key == "plus"_L1 || key == "asterisk"_L1 ||
           (key.size() == 1 &&
            (key[0].isUpper() || QStringLiteral("~!@#$%^&*()_+{}|:\"<>?").contains(key)));
}

} // namespace

Wire::Wire(const QString& path)
{
    connectToServer(path);
}

QByteArray Wire::next(qint64 size)
{
    while (bytesAvailable() < size && waitForReadyRead(patience)) {
    }
    return read(size);
}

QByteArray Wire::nextUpTo(const QByteArray& end)
{
    QByteArray heard;
    while (!heard.endsWith(end) && (bytesAvailable() > 0 || waitForReadyRead(patience)))
        heard += read(1);
    return heard;
}

QByteArray Wire::words(std::initializer_list<quint32> numbers)
{
    return {reinterpret_cast<const char*>(numbers.begin()), qsizetype(numbers.size() * 4)};
}

WaylandDesk::WaylandDesk() : m_hands(qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/hands"_s)
{
    m_hands.next(12);
    m_hands.write("RFB 003.008\n");
    m_hands.next(m_hands.next(1).at(0));
    m_hands.write("\1"); // without a password
    m_hands.next(4);
    m_hands.write("\1");
    m_hands.next(m_hands.next(24).back());
}

QByteArray WaylandDesk::sway(const QString& words)
{
    return outputOf(u"swaymsg"_s, words.split(u' '));
}

QList<QJsonObject> WaylandDesk::nodes()
{
    const QByteArray tree = sway(u"--raw --type get_tree"_s);
    QList<QJsonObject> all{QJsonDocument::fromJson(tree).object()};
    for (qsizetype i = 0; i < all.size(); ++i)
        for (const QString& list : {u"nodes"_s, u"floating_nodes"_s})
            for (const auto& below : all[i][list].toArray())
                all << below.toObject();
    all.removeIf([](const QJsonObject& node) { return node[u"pid"_s].toInt() == 0; });
    return all;
}

QJsonObject WaylandDesk::node(const QString& window)
{
    for (const QJsonObject& each : nodes())
        if (QString::number(each[u"id"_s].toInt()) == window)
            return each;
    return {};
}

QStringList WaylandDesk::windows() const
{
    QStringList all;
    for (const QJsonObject& each : nodes())
        all << QString::number(each[u"id"_s].toInt());
    return all;
}

QStringList WaylandDesk::windows(const QString& title) const
{
    QStringList found;
    for (const QJsonObject& each : nodes())
        if (each[u"name"_s] == title && each[u"visible"_s].toBool())
            found << QString::number(each[u"id"_s].toInt());
    return found;
}

QString WaylandDesk::active() const
{
    for (const QJsonObject& each : nodes())
        if (each[u"focused"_s].toBool())
            return QString::number(each[u"id"_s].toInt());
    return {};
}

QString WaylandDesk::titleOf(const QString& window) const
{
    return node(window)[u"name"_s].toString();
}

QRect WaylandDesk::placeOf(const QString& window) const
{
    const QJsonObject place = node(window)[u"rect"_s].toObject();
    return {place[u"x"_s].toInt(), place[u"y"_s].toInt(), place[u"width"_s].toInt(),
            place[u"height"_s].toInt()};
}

QImage WaylandDesk::picture() const
{
    return QImage::fromData(outputOf(u"grim"_s, {u"-t"_s, u"ppm"_s, u"-"_s}));
}

QString WaylandDesk::clipboard() const
{
    return QString::fromUtf8(outputOf(u"wl-paste"_s, {u"--no-newline"_s}));
}

void WaylandDesk::clearClipboard()
{
    outputOf(u"wl-copy"_s, {u"--clear"_s});
}

void WaylandDesk::key(quint32 symbol, bool isDown)
{
    m_hands.write(QByteArray("\4", 1) + char(isDown) + QByteArray(2, 0) +
                  Wire::words({qToBigEndian(symbol)}));
    m_hands.flush();
}

void WaylandDesk::press(const QString& keys)
{
    const QStringList all = keys.split(u'+');
    const bool isShifted = all.contains("shift"_L1);
    const bool needsMore = !isShifted && needsShift(all.last());
    if (needsMore)
        key(shift, true);
    for (const QString& each : all)
        key(symbolOf(each, isShifted), true);
    for (auto each = all.rbegin(); each != all.rend(); ++each)
        key(symbolOf(*each, isShifted), false);
    if (needsMore)
        key(shift, false);
}

void WaylandDesk::type(const QString& text)
{
    for (const QChar letter : text) {
        press(letter == u'+' ? u"plus"_s : QString(letter));
        QTest::qWait(15);
    }
}

void WaylandDesk::point()
{
    const std::array numbers{qToBigEndian(quint16(m_place.x())),
                             qToBigEndian(quint16(m_place.y()))};
    m_hands.write(QByteArray("\5", 1) + char(m_held) +
                  QByteArray(reinterpret_cast<const char*>(numbers.data()), sizeof numbers));
    m_hands.flush();
}

void WaylandDesk::moveTo(const QPoint& place)
{
    // No hand gets there at one go.
    for (const QPoint& underway : {(m_place + place) / 2, place}) {
        m_place = underway;
        point();
    }
}

void WaylandDesk::hold(int button, bool isHeld)
{
    const int bit = 1 << (button - 1);
    m_held = isHeld ? m_held | bit : m_held & ~bit;
    point();
}

void WaylandDesk::awaitAnswer()
{
    QTest::qWait(150); // only the compositor could ask the program, and has no command for it
}

bool WaylandDesk::awaitDrag(const QPoint& near)
{
    // Nothing tells that a drag has begun; a second has been enough.
    for (int i = 0; i < 20; ++i) {
        moveTo(near + QPoint(i % 4, 0));
        QTest::qWait(50);
    }
    return true;
}

bool WaylandDesk::minimise(const QString& /*window*/)
{
    return false; // sway has no such thing
}

void WaylandDesk::resize(const QString& window, const QSize& size)
{
    sway(u"[con_id=%1] resize set %2 %3"_s.arg(window).arg(size.width()).arg(size.height()));
}

void WaylandDesk::move(const QString& window, const QPoint& place)
{
    sway(u"[con_id=%1] move absolute position %2 %3"_s.arg(window).arg(place.x()).arg(place.y()));
}
