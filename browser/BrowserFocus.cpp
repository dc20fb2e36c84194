#include "browser/BrowserFocus.h"

#include "browser/AddressBar.h"

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTimer>

#include <utility>

BrowserFocus::BrowserFocus(const Places& places) : m_places(places)
{
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* before, QWidget* now) {
        remember(now);
        giveBack(before, now);
    });
    places.window.installEventFilter(this);
    places.client.installEventFilter(this);
    // A click gives the focus to the widget under the mouse, which activates the window
    // before the application tells of the change.
    connect(&places.window, &QMdiSubWindow::aboutToActivate, this,
            [this] { remember(QApplication::focusWidget()); });
}

void BrowserFocus::restore()
{
    // The engine replaces its widget, so the place is remembered, not the widget.
    if (m_isInPage)
        m_places.page.setFocus();
    else
        m_places.addressBar.cboAddress()->setFocus();
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
    if (watched == &m_places.window || watched == &m_places.client) {
        if (event->type() == QEvent::Hide && !event->spontaneous())
            setAside();
        else if (event->type() == QEvent::Show && !event->spontaneous())
            takeBack();
        return QObject::eventFilter(watched, event);
    }
    // A widget that is hidden passes its focus on as the Tab key does. The engine's widget
    // (seen with Qt 6.4) passes that key to its page, or to the next page when that is there
    // already, and the first link of it would have the focus. To be removed when a page
    // that is reached from another site no longer begins with its first link focused.
    if (event->type() == QEvent::Hide) {
        auto* const widget = qobject_cast<QWidget*>(watched);
        if (widget != nullptr && widget->isHidden())
            widget->clearFocus();
    }
    return QObject::eventFilter(watched, event);
}

void BrowserFocus::setAside()
{
    // QMdiSubWindow hides itself, or what is in it, to become normal, maximised or minimised.
    // The focus would go on as by the Tab key then (seen with Qt 6.4), and what is typed in
    // the address line would be taken for left.
    QWidget* const focus = QApplication::focusWidget();
    if (focus == nullptr || !m_places.window.isAncestorOf(focus))
        return;
    m_aside = focus;
    m_places.window.window()->setFocus(Qt::ActiveWindowFocusReason);
}

void BrowserFocus::takeBack()
{
    if (QWidget* const focus = std::exchange(m_aside, nullptr))
        focus->setFocus(Qt::ActiveWindowFocusReason);
}

void BrowserFocus::giveBack(const QWidget* before, const QWidget* now)
{
    // The engine hides a widget that it replaces. Its focus goes nowhere then, or to the
    // next control of the window; both were seen, with Qt 6.4 and 6.8.
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
