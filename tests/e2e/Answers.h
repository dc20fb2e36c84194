#pragma once

#include <QAbstractNativeEventFilter>

#include <cstdint>

struct xcb_connection_t;

/// Finds out how far programs on the display are: whether one has worked off what it was sent, by
/// the question with which window managers find hanging programs (_NET_WM_PING), and whether one
/// has begun to drag something.
class Answers : public QAbstractNativeEventFilter {
public:
    Answers();
    ~Answers() override;
    Q_DISABLE_COPY_MOVE(Answers)

    /// Waits until the program of a window has answered, or for 5 s.
    void await(std::uint32_t window);
    /// From now on nobody drags anything.
    void forgetDrag() const;
    /// Whether a program has begun to drag something since, within 5 s.
    bool awaitDrag() const;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    std::uint32_t atom(const char* name) const;
    void ask(std::uint32_t window, std::uint32_t number) const;

    xcb_connection_t* m_connection;
    std::uint32_t m_root;
    std::uint32_t m_protocols;
    std::uint32_t m_ping;
    std::uint32_t m_asked = 0;
    std::uint32_t m_answered = 0;
};
