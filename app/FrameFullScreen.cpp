#include "app/FrameFullScreen.h"

#include "app/MDIForm1.h"
#include "pages/viewing/PageHint.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenuBar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
constexpr std::chrono::seconds hintTime(3);
/// How long the pointer may cross a page on its way from one bar to another.
constexpr std::chrono::seconds awayTime(1);
/// Of the strip that notices the pointer, in pixels.
constexpr int edgeHeight = 2;
} // namespace

FrameFullScreen::FrameFullScreen(MDIForm1& frame)
    : QObject(&frame), m_frame(frame), m_edge(new QWidget(&frame))
{
    m_edge->hide();
    m_edge->installEventFilter(this);
    frame.installEventFilter(this);
    m_awayTimer.setSingleShot(true);
    m_awayTimer.setInterval(awayTime);
    connect(&m_awayTimer, &QTimer::timeout, this, [this] {
        if (m_isRevealed && isOverPage() && !isInUse())
            hideBars();
    });
}

void FrameFullScreen::toggle()
{
    m_frame.setWindowState(m_frame.windowState() ^ Qt::WindowFullScreen);
}

void FrameFullScreen::follow()
{
    if (m_frame.isFullScreen() == m_isOn)
        return;
    m_isOn = m_frame.isFullScreen();
    if (m_isOn) {
        m_edge->show(); // nothing is hidden yet
        reveal();
        if (!isInUse())
            hideBars();
        m_hint = new PageHint(&m_frame);
        m_hint->showFor(hintTime, u"F11 beendet das Vollbild. Menü und Leisten zeigt der obere "
                                  u"Bildschirmrand."_s);
        return;
    }
    delete m_hint;
    reveal();
    m_isRevealed = false;
    qApp->removeEventFilter(this);
    m_awayTimer.stop();
}

void FrameFullScreen::hideBars()
{
    m_isRevealed = false;
    qApp->removeEventFilter(this);
    m_frame.showBars(false);
    m_edge->setGeometry(0, 0, m_frame.width(), edgeHeight);
    m_edge->show();
    m_edge->raise();
}

void FrameFullScreen::reveal()
{
    if (m_edge->isHidden())
        return;
    m_edge->hide();
    m_frame.showBars(true);
    m_isRevealed = true;
    qApp->installEventFilter(this);
}

bool FrameFullScreen::isInUse()
{
    const QWidget* const focus = QApplication::focusWidget();
    return QApplication::activePopupWidget() != nullptr ||
           qobject_cast<const QMenuBar*>(focus) != nullptr ||
           qobject_cast<const QLineEdit*>(focus) != nullptr ||
           qobject_cast<const QComboBox*>(focus) != nullptr;
}

bool FrameFullScreen::isOverPage() const
{
    const QWidget* const below = QApplication::widgetAt(QCursor::pos());
    return std::any_of(m_frame.Browser().begin(), m_frame.Browser().end(), [&](frmBrowser* each) {
        const QWidget* const page = each->brwWebBrowser()->host();
        return page == below || page->isAncestorOf(below);
    });
}

void FrameFullScreen::watchPointer()
{
    if (!isOverPage())
        m_awayTimer.stop();
    else if (!m_awayTimer.isActive())
        m_awayTimer.start();
}

bool FrameFullScreen::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::WindowStateChange:
        if (watched == &m_frame)
            follow();
        break;
    case QEvent::Resize:
        if (watched == &m_frame && !m_edge->isHidden())
            m_edge->resize(m_frame.width(), edgeHeight);
        break;
    case QEvent::Enter:
        if (watched == m_edge)
            reveal();
        break;
    case QEvent::MouseMove:
    case QEvent::FocusIn:
        if (m_isRevealed)
            watchPointer();
        break;
    default:
        break;
    }
    return false;
}
