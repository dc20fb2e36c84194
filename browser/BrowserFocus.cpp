#include "browser/BrowserFocus.h"

#include <QApplication>
#include <QEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTimer>

BrowserFocus::BrowserFocus(const Places& places) : m_places(places)
{
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* before, QWidget* now) {
        remember(now);
        giveBack(before, now);
    });
    // A click gives the focus to what it meets, which activates the window before the
    // change is told.
    connect(&places.window, &QMdiSubWindow::aboutToActivate, this,
            [this] { remember(QApplication::focusWidget()); });
}

void BrowserFocus::remember(QWidget* now)
{
    if (now == nullptr)
        return;
    if (m_places.addressBar.isAncestorOf(now)) {
        m_isInPage = false;
    } else if (isOfPage(*now)) {
        m_isInPage = true;
        now->installEventFilter(this);
    }
}

bool BrowserFocus::eventFilter(QObject* watched, QEvent* event)
{
    // A widget that is hidden passes its focus on as the Tab key does. One of the engine
    // (seen with Qt 6.4) sends its page that key, or already the page that comes after
    // it: the first link there would have the focus.
    if (event->type() == QEvent::Hide) {
        auto* const widget = qobject_cast<QWidget*>(watched);
        if (widget != nullptr && widget->isHidden())
            widget->clearFocus();
    }
    return QObject::eventFilter(watched, event);
}

void BrowserFocus::giveBack(const QWidget* before, const QWidget* now)
{
    // The engine hides a widget that it replaces. Where its focus goes then differs
    // between the engine's versions: nowhere, or to the next control of the window.
    const bool isTakenAway = before != nullptr && before->isHidden() && isOfPage(*before);
    if (now != nullptr && !isTakenAway)
        return;
    QTimer::singleShot(0, this, [this, isTakenAway] {
        const QMdiSubWindow& window = m_places.window;
        const QWidget* const focus = window.window()->focusWidget();
        const bool isLost = isTakenAway || focus == nullptr || focus == &window;
        if (isLost && m_isInPage && window.mdiArea() &&
            window.mdiArea()->currentSubWindow() == &window)
            m_places.page.setFocus();
    });
}

bool BrowserFocus::isOfPage(const QWidget& widget) const
{
    return m_places.client.isAncestorOf(&widget) && !m_places.addressBar.isAncestorOf(&widget) &&
           !m_places.toolbar.isAncestorOf(&widget);
}
