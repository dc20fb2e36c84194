#include "app/StartupNotice.h"

#include <QGuiApplication>
#include <QWidget>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <xcb/xcb.h>

namespace {

constexpr const char* tokenVariable = "XDG_ACTIVATION_TOKEN";

xcb_connection_t* display()
{
    auto* const application = qApp->nativeInterface<QNativeInterface::QX11Application>();
    return application == nullptr ? nullptr : application->connection();
}

xcb_window_t rootWindow(xcb_connection_t* display)
{
    return xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
}

xcb_atom_t atom(xcb_connection_t* display, const char* name)
{
    const auto cookie =
        xcb_intern_atom(display, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(display, cookie, nullptr), &std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void sendToRoot(xcb_connection_t* display, const xcb_client_message_event_t& message,
                std::uint32_t mask)
{
    xcb_send_event(display, 0, rootWindow(display), mask, reinterpret_cast<const char*>(&message));
}

/// The time of the user's action in the display's milliseconds; 0 when the id has none.
xcb_timestamp_t timeOf(const QByteArray& startupId)
{
    const qsizetype place = startupId.lastIndexOf("_TIME");
    return place < 0 ? 0 : startupId.sliced(place + 5).toUInt();
}

} // namespace

bool startupNotice::isWayland()
{
    return QGuiApplication::platformName().startsWith(QStringLiteral("wayland"));
}

void startupNotice::prepare()
{
    // A variable that is set again takes its old place in the list of variables, so that
    // the list is not moved while the engine's threads read it.
    if (qEnvironmentVariableIsSet(tokenVariable))
        return;
    qputenv(tokenVariable, {});
    qunsetenv(tokenVariable);
}

void startupNotice::letToFront(const QWidget& window, const QByteArray& activationToken,
                               const QByteArray& startupId)
{
    // Qt takes a token from this variable only (6.4, 6.8). Before this is removed, look for
    // another way to give QWindow::requestActivate() a token.
    if (isWayland() && !activationToken.isEmpty())
        qputenv(tokenVariable, activationToken);
    xcb_connection_t* const x11 = display();
    const xcb_timestamp_t time = timeOf(startupId);
    if (x11 == nullptr || time == 0)
        return;
    const auto id = static_cast<xcb_window_t>(window.effectiveWinId());
    xcb_change_property(x11, XCB_PROP_MODE_REPLACE, id, atom(x11, "_NET_WM_USER_TIME"),
                        XCB_ATOM_CARDINAL, 32, 1, &time);
    xcb_change_property(x11, XCB_PROP_MODE_REPLACE, id, atom(x11, "_NET_STARTUP_ID"),
                        atom(x11, "UTF8_STRING"), 8, static_cast<std::uint32_t>(startupId.size()),
                        startupId.constData());
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = id;
    message.type = atom(x11, "_NET_ACTIVE_WINDOW");
    message.data.data32[0] = 1; // a program asks
    message.data.data32[1] = time;
    sendToRoot(x11, message,
               XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    xcb_flush(x11);
}

bool startupNotice::isTokenLeft()
{
    return isWayland() && qEnvironmentVariableIsSet(tokenVariable);
}

void startupNotice::end(const QByteArray& startupId)
{
    xcb_connection_t* const x11 = display();
    if (x11 == nullptr || startupId.isEmpty())
        return;
    // The text goes in pieces of 20 bytes, the last of them ended by a zero. The receiver
    // tells the pieces of one text from others by the window that sent them.
    const QByteArray text = "remove: ID=" + startupId + '\0';
    const xcb_window_t sender = xcb_generate_id(x11);
    const xcb_window_t root = rootWindow(x11);
    xcb_create_window(x11, XCB_COPY_FROM_PARENT, sender, root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 8;
    message.window = sender;
    message.type = atom(x11, "_NET_STARTUP_INFO_BEGIN");
    for (qsizetype sent = 0; sent < text.size(); sent += 20) {
        std::memset(message.data.data8, 0, 20);
        std::memcpy(message.data.data8, text.constData() + sent,
                    static_cast<std::size_t>(std::min<qsizetype>(20, text.size() - sent)));
        sendToRoot(x11, message, XCB_EVENT_MASK_PROPERTY_CHANGE);
        message.type = atom(x11, "_NET_STARTUP_INFO");
    }
    xcb_destroy_window(x11, sender);
    xcb_flush(x11);
}
