#include "app/AddressToClipboard.h"

#include "app/StartupNotice.h"

#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>

#include <chrono>

void AddressToClipboard::put(const QString& text)
{
    if (!startupNotice::isWayland()) {
        QGuiApplication::clipboard()->setText(text);
        return;
    }
    // A compositor refuses a text when another program's has come to the clipboard since the
    // last input here. The toolkit (6.4, 6.8) does not notice, and would paste the refused one
    // into our windows in place of whatever the user copies elsewhere from then on. Nobody tells
    // what is copied while another program has the focus: a text that is no longer new is dropped.
    using namespace std::chrono_literals;
    m_waiting = text;
    m_end.setRemainingTime(2min);
    qApp->installEventFilter(this);
}

bool AddressToClipboard::eventFilter(QObject* /*watched*/, QEvent* event)
{
    if (!event->spontaneous() ||
        (event->type() != QEvent::KeyPress && event->type() != QEvent::MouseButtonPress))
        return false;
    qApp->removeEventFilter(this);
    if (!m_end.hasExpired())
        QGuiApplication::clipboard()->setText(m_waiting);
    return false;
}
