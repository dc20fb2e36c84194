#pragma once

#include "tests/e2e/Desk.h"

#include <QAbstractNativeEventFilter>

#include <cstdint>

struct xcb_connection_t;

/// A display of X11 with a window manager. Finds out how far programs are: whether one has worked
/// off what it was sent, by the question with which window managers find hanging programs
/// (_NET_WM_PING), and whether one has begun to drag something.
class X11Desk : public Desk, public QAbstractNativeEventFilter {
public:
    X11Desk();

    QStringList windows() const override;
    QStringList windows(const QString& title) const override;
    QString active() const override;
    QString titleOf(const QString& window) const override;
    QRect placeOf(const QString& window) const override;
    QImage picture() const override;
    QString clipboard() const override;
    void clearClipboard() override;

    void press(const QString& keys) override;
    void type(const QString& text) override;
    void moveTo(const QPoint& place) override;
    void hold(int button, bool isHeld) override;
    void awaitAnswer() override;
    void forgetDrag() override;
    bool awaitDrag(const QPoint& near) override;

    bool minimise(const QString& window) override;
    void resize(const QString& window, const QSize& size) override;
    void move(const QString& window, const QPoint& place) override;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    static QString tool(const QString& command, const QStringList& further = {});
    std::uint32_t atom(const char* name) const;
    void ask(std::uint32_t window, std::uint32_t number) const;

    xcb_connection_t* m_connection;
    std::uint32_t m_root;
    std::uint32_t m_protocols;
    std::uint32_t m_ping;
    std::uint32_t m_asked = 0;
    std::uint32_t m_answered = 0;
};
