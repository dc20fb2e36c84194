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

/// The window that covers the screen. It goes when its page has been taken back.
class ScreenView : public QWebEngineView {
public:
    ScreenView(QWidget* owner, std::function<void()> closed)
        : QWebEngineView(owner), m_closed(std::move(closed))
    {
        setObjectName(u"FullScreen"_s);
        setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
        setGeometry(owner->screen()->geometry());
    }

protected:
    bool event(QEvent* event) override
    {
        // A question has opened, whoever asks: here it could not be seen, nor this window
        // be left by a key.
        if (event->type() == QEvent::WindowBlocked)
            QTimer::singleShot(0, this, m_closed);
        return QWebEngineView::event(event);
    }
    void closeEvent(QCloseEvent* event) override
    {
        event->ignore();
        m_closed();
    }

private:
    std::function<void()> m_closed;
};

/// A widget that is taken away passes its focus on as the Tab key does, and the page
/// would go on to its next control.
void dropFocus(const QWebEngineView& view)
{
    if (QWidget* const picture = view.focusProxy())
        picture->clearFocus();
}

/// The window would lie over the question.
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
        QTimer::singleShot(0, this, &PageFullScreen::follow);
    });
    connect(window, &QObject::destroyed, this, &PageFullScreen::putBack);
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
        QTimer::singleShot(0, this, &PageFullScreen::follow);
    }
    request.accept();
}

void PageFullScreen::follow()
{
    if (!m_isWanted)
        putBack();
    else if (!m_screen && m_view && m_view->isVisible() && !isQuestionOpen())
        enter();
    else if (!m_screen)
        endIt();
}

void PageFullScreen::enter()
{
    m_screen = new ScreenView(m_view, [this] { endIt(); });
    addPageKeys(m_screen, {Qt::Key_Escape, Qt::Key_F11}, this, [this] { endIt(); });
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

void PageFullScreen::endIt()
{
    m_isWanted = false;
    m_page->triggerAction(QWebEnginePage::ExitFullScreen);
    // Whether the page answers or not.
    QTimer::singleShot(0, this, &PageFullScreen::putBack);
}

void PageFullScreen::leave()
{
    if (m_screen)
        m_page->triggerAction(QWebEnginePage::ExitFullScreen);
    putBack();
}

void PageFullScreen::putBack()
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
    // Or its end would take the focus from what it has stood for.
    screen->setFocusProxy(nullptr);
    screen->deleteLater();
    m_standIn.reset();
    if (m_view) {
        if (!isQuestionOpen())
            m_view->activateWindow();
        m_view->setFocus();
    }
}
