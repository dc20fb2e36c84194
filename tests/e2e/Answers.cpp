#include "tests/e2e/Answers.h"

#include <QGuiApplication>
#include <QtTest>

#include <cstdlib>
#include <cstring>
#include <xcb/xcb.h>

namespace {
constexpr int patience = 5000;
} // namespace

Answers::Answers()
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

Answers::~Answers()
{
    qApp->removeNativeEventFilter(this);
}

std::uint32_t Answers::atom(const char* name) const
{
    auto* const reply = xcb_intern_atom_reply(
        m_connection,
        xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
        nullptr);
    const std::uint32_t found = reply->atom;
    std::free(reply);
    return found;
}

void Answers::await(std::uint32_t window)
{
    // The toolkit answers at once, before it handles the keys that came with the question: those
    // are handled when the next one is answered, and what they have set going by the third.
    constexpr int questions = 3;
    for (int i = 0; i < questions; ++i) {
        ask(window, ++m_asked);
        if (!QTest::qWaitFor([this] { return m_answered == m_asked; }, patience))
            return;
    }
}

void Answers::forgetDrag() const
{
    xcb_set_selection_owner(m_connection, XCB_NONE, atom("XdndSelection"), XCB_CURRENT_TIME);
    xcb_flush(m_connection);
}

bool Answers::awaitDrag() const
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

void Answers::ask(std::uint32_t window, std::uint32_t number) const
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

bool Answers::nativeEventFilter(const QByteArray& /*eventType*/, void* message, qintptr* /*result*/)
{
    const auto* const event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE)
        return false;
    const auto* const answer = static_cast<const xcb_client_message_event_t*>(message);
    if (answer->window == m_root && answer->data.data32[0] == m_ping)
        m_answered = answer->data.data32[1];
    return false;
}
