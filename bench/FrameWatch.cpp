#include "bench/FrameWatch.h"

#include "bench/Report.h"
#include "bench/Waiting.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <poll.h>
#include <string_view>
#include <vector>

namespace {

constexpr int patience = 60000;
constexpr int restBetween = 5;     // between an answer and the next question, in ms
constexpr double atOnce = 40;      // ms
constexpr double longEnough = 500; // ms

template <class T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

double now()
{
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::milli>(time).count();
}

xcb_atom_t atom(xcb_connection_t* display, std::string_view name)
{
    const auto request =
        xcb_intern_atom(display, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(display, request, nullptr),
                                               &std::free);
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

std::vector<std::uint32_t> numbers(xcb_connection_t* display, xcb_window_t window,
                                   std::string_view property)
{
    constexpr std::uint32_t most = 1024;
    const auto request = xcb_get_property(display, 0, window, atom(display, property),
                                          XCB_GET_PROPERTY_TYPE_ANY, 0, most);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(display, request, nullptr),
                                                &std::free);
    if (!reply || reply->format != 32)
        return {};
    const auto* const first =
        static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

xcb_keycode_t keyOf(xcb_connection_t* display, std::uint32_t keysym)
{
    const xcb_setup_t& setup = *xcb_get_setup(display);
    const int count = setup.max_keycode - setup.min_keycode + 1;
    const auto request =
        xcb_get_keyboard_mapping(display, setup.min_keycode, static_cast<std::uint8_t>(count));
    const Reply<xcb_get_keyboard_mapping_reply_t> reply(
        xcb_get_keyboard_mapping_reply(display, request, nullptr), &std::free);
    if (!reply)
        throw BenchError("the display has no keyboard");
    const xcb_keysym_t* const all = xcb_get_keyboard_mapping_keysyms(reply.get());
    for (int key = 0; key < count; ++key)
        if (all[key * reply->keysyms_per_keycode] == keysym)
            return static_cast<xcb_keycode_t>(setup.min_keycode + key);
    throw BenchError("the keyboard has no such key");
}

} // namespace

FrameWatch::FrameWatch(qint64 process) : m_display(xcb_connect(nullptr, nullptr))
{
    if (xcb_connection_has_error(m_display) != 0)
        throw BenchError("there is no display");
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_display)).data->root;
    if (!runUntil([&] { return findWindow(process); }, patience))
        throw BenchError("the program shows no window");
    // Answers go to the root window. Qt sends them to those who listen for changes of the root
    // itself (seen with Qt 6.4), where the convention says changes of its children.
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_display, m_root, XCB_CW_EVENT_MASK, &mask);
    m_thread = std::thread([this] { ask(); });
}

FrameWatch::~FrameWatch()
{
    m_isEnding = true;
    m_thread.join();
    xcb_disconnect(m_display);
}

bool FrameWatch::findWindow(qint64 process)
{
    for (const xcb_window_t window : numbers(m_display, m_root, "_NET_CLIENT_LIST"))
        if (numbers(m_display, window, "_NET_WM_PID") == std::vector{std::uint32_t(process)})
            m_window = window;
    return m_window != 0;
}

int FrameWatch::windows(qint64 process) const
{
    const auto all = numbers(m_display, m_root, "_NET_CLIENT_LIST");
    return static_cast<int>(std::count_if(all.begin(), all.end(), [&](xcb_window_t window) {
        return numbers(m_display, window, "_NET_WM_PID") == std::vector{std::uint32_t(process)};
    }));
}

void FrameWatch::ask()
{
    const xcb_atom_t ping = atom(m_display, "_NET_WM_PING");
    xcb_client_message_event_t question = {};
    question.response_type = XCB_CLIENT_MESSAGE;
    question.format = 32;
    question.window = m_window;
    question.type = atom(m_display, "WM_PROTOCOLS");
    question.data.data32[0] = ping;
    question.data.data32[2] = m_window;
    std::uint32_t number = 0;
    double asked = 0;
    while (!m_isEnding) {
        if (asked == 0) {
            question.data.data32[1] = ++number;
            asked = now();
            xcb_send_event(m_display, 0, m_window, XCB_EVENT_MASK_NO_EVENT,
                           reinterpret_cast<const char*>(&question));
            xcb_flush(m_display);
        }
        pollfd waiting = {xcb_get_file_descriptor(m_display), POLLIN, 0};
        ::poll(&waiting, 1, restBetween);
        bool isAnswered = false;
        while (xcb_generic_event_t* const event = xcb_poll_for_event(m_display)) {
            const auto& message = *reinterpret_cast<xcb_client_message_event_t*>(event);
            isAnswered =
                isAnswered || ((event->response_type & 0x7f) == XCB_CLIENT_MESSAGE &&
                               message.data.data32[0] == ping && message.data.data32[1] == number);
            std::free(event);
        }
        const double waited = now() - asked;
        m_longest = std::max(m_longest.load(), waited);
        if (waited > atOnce)
            m_freeSince = 0;
        if (!isAnswered)
            continue;
        if (waited <= atOnce && m_freeSince == 0)
            m_freeSince = asked;
        asked = 0;
        ++m_answers;
        std::this_thread::sleep_for(std::chrono::milliseconds(restBetween));
    }
}

void FrameWatch::press(quint32 keysym, quint16 modifiers)
{
    xcb_key_press_event_t event = {};
    event.detail = keyOf(m_display, keysym);
    event.time = XCB_CURRENT_TIME;
    event.root = m_root;
    event.event = m_window;
    event.state = modifiers;
    event.same_screen = 1;
    for (const auto type : {XCB_KEY_PRESS, XCB_KEY_RELEASE}) {
        event.response_type = static_cast<std::uint8_t>(type);
        xcb_send_event(m_display, 0, m_window, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&event));
    }
    xcb_flush(m_display);
    const int before = m_answers;
    for (const double begin = now(); m_answers < before + 2;) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        if (now() - begin > patience)
            throw BenchError("the program does not answer");
    }
}

double FrameWatch::untilFree()
{
    const double begin = now();
    m_freeSince = 0;
    if (!runUntil([&] { return m_freeSince != 0 && now() - m_freeSince > longEnough; }, patience))
        throw BenchError("the program does not come to rest");
    return std::max(0.0, m_freeSince - begin);
}

double FrameWatch::takeLongest()
{
    return m_longest.exchange(0);
}
