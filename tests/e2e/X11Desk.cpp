#include "tests/e2e/X11Desk.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPixmap>
#include <QRegularExpression>
#include <QScreen>
#include <QtTest>

#include <cstdlib>
#include <cstring>
#include <xcb/xcb.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 5000;

QStringList numbers(int first, int second)
{
    return {QString::number(first), QString::number(second)};
}

} // namespace

X11Desk::X11Desk()
    : m_connection(qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection()),
      m_root(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root),
      m_protocols(atom("WM_PROTOCOLS")), m_ping(atom("_NET_WM_PING"))
{
    // Answers go to the root window. The toolkit hears of it, too.
    auto* const now = xcb_get_window_attributes_reply(
        m_connection, xcb_get_window_attributes(m_connection, m_root), nullptr);
    const std::uint32_t events = now->your_event_mask | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    std::free(now);
    xcb_change_window_attributes(m_connection, m_root, XCB_CW_EVENT_MASK, &events);
    qApp->installNativeEventFilter(this);
}

std::uint32_t X11Desk::atom(const char* name) const
{
    auto* const reply = xcb_intern_atom_reply(
        m_connection,
        xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
        nullptr);
    const std::uint32_t found = reply->atom;
    std::free(reply);
    return found;
}

void X11Desk::awaitAnswer()
{
    const std::uint32_t window = active().toUInt();
    // The toolkit answers at once, before it handles the keys that came with the question: those
    // are handled when the next one is answered, and what they have set going by the third.
    constexpr int questions = 3;
    for (int i = 0; i < questions; ++i) {
        ask(window, ++m_asked);
        if (!QTest::qWaitFor([this] { return m_answered == m_asked; }, patience))
            return;
    }
}

QRect X11Desk::placeOf(const QString& name) const
{
    const std::uint32_t window = name.toUInt(nullptr, 0);
    // The user's tool counts the decoration twice.
    auto* const size =
        xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr);
    auto* const place = xcb_translate_coordinates_reply(
        m_connection, xcb_translate_coordinates(m_connection, window, m_root, 0, 0), nullptr);
    const QRect found = size != nullptr && place != nullptr
                            ? QRect(place->dst_x, place->dst_y, size->width, size->height)
                            : QRect();
    std::free(size);
    std::free(place);
    return found;
}

void X11Desk::forgetDrag()
{
    xcb_set_selection_owner(m_connection, XCB_NONE, atom("XdndSelection"), XCB_CURRENT_TIME);
    xcb_flush(m_connection);
}

bool X11Desk::awaitDrag(const QPoint& /*near*/)
{
    const std::uint32_t dragged = atom("XdndSelection");
    return QTest::qWaitFor(
        [this, dragged] {
            auto* const reply = xcb_get_selection_owner_reply(
                m_connection, xcb_get_selection_owner(m_connection, dragged), nullptr);
            const std::uint32_t owner = reply->owner;
            std::free(reply);
            return owner != XCB_NONE;
        },
        patience);
}

void X11Desk::ask(std::uint32_t window, std::uint32_t number) const
{
    xcb_client_message_event_t question = {};
    question.response_type = XCB_CLIENT_MESSAGE;
    question.format = 32;
    question.window = window;
    question.type = m_protocols;
    question.data.data32[0] = m_ping;
    question.data.data32[1] = number;
    question.data.data32[2] = window;
    xcb_send_event(m_connection, 0, window, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&question));
    xcb_flush(m_connection);
}

bool X11Desk::nativeEventFilter(const QByteArray& /*eventType*/, void* message, qintptr* /*result*/)
{
    const auto* const event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE)
        return false;
    const auto* const answer = static_cast<const xcb_client_message_event_t*>(message);
    if (answer->window == m_root && answer->data.data32[0] == m_ping)
        m_answered = answer->data.data32[1];
    return false;
}

QString X11Desk::tool(const QString& command, const QStringList& further)
{
    return QString::fromUtf8(outputOf(u"xdotool"_s, command.split(u' ') + further)).trimmed();
}

QStringList X11Desk::windows() const
{
    return QString::fromLatin1(
               outputOf(u"xprop"_s, {u"-root"_s, u"-notype"_s, u"_NET_CLIENT_LIST"_s}))
        .trimmed()
        .section(u"# "_s, 1)
        .split(u", "_s, Qt::SkipEmptyParts);
}

QStringList X11Desk::windows(const QString& title) const
{
    const QString pattern = u'^' + QRegularExpression::escape(title) + u'$';
    return tool(u"search --onlyvisible --name"_s, {pattern}).split(u'\n', Qt::SkipEmptyParts);
}

QString X11Desk::active() const
{
    return tool(u"getactivewindow"_s);
}

QString X11Desk::titleOf(const QString& window) const
{
    return tool(u"getwindowname"_s, {window});
}

QImage X11Desk::picture() const
{
    return QGuiApplication::primaryScreen()->grabWindow(0).toImage();
}

QString X11Desk::clipboard() const
{
    return QGuiApplication::clipboard()->text();
}

void X11Desk::clearClipboard()
{
    QGuiApplication::clipboard()->clear();
}

void X11Desk::press(const QString& keys)
{
    tool(u"key"_s, {keys});
}

void X11Desk::type(const QString& text)
{
    tool(u"type --delay 15"_s, {text});
}

void X11Desk::moveTo(const QPoint& place)
{
    // Not to be waited for: a pointer that is there already never moves.
    tool(u"mousemove"_s, numbers(place.x(), place.y()));
}

void X11Desk::hold(int button, bool isHeld)
{
    tool(isHeld ? u"mousedown"_s : u"mouseup"_s, {QString::number(button)});
}

bool X11Desk::minimise(const QString& window)
{
    tool(u"windowminimize"_s, {window});
    return true;
}

void X11Desk::resize(const QString& window, const QSize& size)
{
    tool(u"windowsize --sync"_s, QStringList(window) + numbers(size.width(), size.height()));
}

void X11Desk::move(const QString& window, const QPoint& place)
{
    tool(u"windowmove"_s, QStringList(window) + numbers(place.x(), place.y()));
}
