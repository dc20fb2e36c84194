#include "engine/viewing/PageFullScreen.h"

#include "pages/asking/SiteText.h"
#include "pages/viewing/PageHint.h"
#include "pages/viewing/PageKeys.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>
#include <QTimer>
#include <QWebEngineFullScreenRequest>
#include <QWebEnginePage>
#include <QWebEngineView>

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::seconds hintTime(3);

/// The window that covers the screen. It does not close by itself: when it is to be closed, or
/// cannot stay, it calls `end`.
class ScreenView : public QWebEngineView {
public:
    ScreenView(QWidget* owner, std::function<void()> end)
        : QWebEngineView(owner), m_end(std::move(end))
    {
        setObjectName(u"FullScreen"_s);
        setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
        setGeometry(owner->screen()->geometry());
    }

protected:
    bool event(QEvent* event) override
    {
        // A question has opened, whoever asks: it could not be seen behind this window, and this
        // window would get no key to be left by.
        if (event->type() == QEvent::WindowBlocked)
            QTimer::singleShot(0, this, m_end);
        return QWebEngineView::event(event);
    }
    void closeEvent(QCloseEvent* event) override
    {
        event->ignore();
        m_end();
    }

private:
    std::function<void()> m_end;
};

/// To be called before the page moves to another view. A widget that is taken away passes its
/// focus on as the Tab key does, and the page would go on to its next control (seen with Qt 6.4).
void dropFocus(const QWebEngineView& view)
{
    if (QWidget* const picture = view.focusProxy())
        picture->clearFocus();
}

/// Whether a question is open, over which the full-screen window would lie.
bool isQuestionOpen()
{
    return QApplication::activeModalWidget() != nullptr;
}

QString hintFor(const QString& site)
{
    return u"%1 zeigt ein Vollbild. Esc beendet die Vollbildanzeige."_s.arg(site);
}

} // namespace

PageFullScreen::PageFullScreen(QWidget* window, QWebEngineView* view, QWebEnginePage* page)
    : QObject(page), m_page(page), m_view(view)
{
    connect(page, &QWebEnginePage::fullScreenRequested, this, &PageFullScreen::answer);
    connect(page, &QWebEnginePage::renderProcessTerminated, this, [this] {
        m_isWanted = false;
        QTimer::singleShot(0, this, &PageFullScreen::enterOrLeave);
    });
    connect(window, &QObject::destroyed, this, &PageFullScreen::giveBack);
}

PageFullScreen::~PageFullScreen()
{
    delete m_screen;
}

void PageFullScreen::answer(QWebEngineFullScreenRequest request)
{
    if (m_isWanted != request.toggleOn()) {
        m_isWanted = request.toggleOn();
        m_site = siteName(request.origin());
        QTimer::singleShot(0, this, &PageFullScreen::enterOrLeave);
    }
    request.accept();
}

void PageFullScreen::enterOrLeave()
{
    if (!m_isWanted)
        giveBack();
    else if (!m_screen && m_view && m_view->isVisible() && !isQuestionOpen())
        enter();
    else if (!m_screen)
        end();
}

void PageFullScreen::enter()
{
    m_screen = new ScreenView(m_view, [this] { end(); });
    addPageKeys(m_screen, {Qt::Key_Escape, Qt::Key_F11}, this, [this] { end(); });
    m_standIn = std::make_unique<QWebEnginePage>(m_page->profile());
    m_standIn->setBackgroundColor(Qt::black);
    dropFocus(*m_view);
    m_view->setPage(m_standIn.get());
    m_screen->setPage(m_page);
    m_screen->showFullScreen();
    m_screen->activateWindow();
    m_screen->setFocus();
    (new PageHint(m_screen))->showFor(hintTime, hintFor(m_site));
    emit entered(m_screen);
}

void PageFullScreen::end()
{
    m_isWanted = false;
    m_page->triggerAction(QWebEnginePage::ExitFullScreen);
    // Does nothing if the page has answered by then.
    QTimer::singleShot(0, this, &PageFullScreen::giveBack);
}

void PageFullScreen::leave()
{
    if (m_screen)
        m_page->triggerAction(QWebEnginePage::ExitFullScreen);
    giveBack();
}

void PageFullScreen::giveBack()
{
    m_isWanted = false;
    if (!m_screen)
        return;
    emit leaving();
    QWebEngineView* const screen = m_screen;
    m_screen = nullptr;
    dropFocus(*screen);
    screen->hide();
    if (m_view)
        m_view->setPage(m_page);
    // The proxy is the widget of the page, which has moved back: when the window is deleted, it
    // would take the focus away from its proxy.
    screen->setFocusProxy(nullptr);
    screen->deleteLater();
    m_standIn.reset();
    if (m_view) {
        if (!isQuestionOpen())
            m_view->activateWindow();
        m_view->setFocus();
    }
}
