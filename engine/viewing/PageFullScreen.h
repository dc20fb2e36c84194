#pragma once

#include <QObject>
#include <QPointer>

#include <memory>

class QWebEngineFullScreenRequest;
class QWebEnginePage;
class QWebEngineView;

/// Shows a page on the whole screen when it asks for that. A view in a window of its own takes
/// the page over meanwhile, so that the page's browser window stays as it is.
class PageFullScreen : public QObject {
    Q_OBJECT
public:
    /// Belongs to `page`, which `view` in `window` shows.
    PageFullScreen(QWidget* window, QWebEngineView* view, QWebEnginePage* page);
    ~PageFullScreen() override;
    Q_DISABLE_COPY_MOVE(PageFullScreen)

    /// Ends the full screen at once, if there is one. Not to be called from within a signal or
    /// an event of the page.
    void leave();

signals:
    /// `screen` shows the page from now on. It is destroyed when it no longer does.
    void entered(QWebEngineView* screen);
    /// The page is about to go back to its browser window.
    void leaving();

private:
    void answer(QWebEngineFullScreenRequest request);
    void enterOrLeave();
    void enter();
    void end();
    void giveBack();

    QWebEnginePage* m_page;
    QPointer<QWebEngineView> m_view;
    QPointer<QWebEngineView> m_screen;
    /// What the view in the browser window shows meanwhile: a black page.
    std::unique_ptr<QWebEnginePage> m_standIn;
    QString m_site;
    /// What the page has asked for last.
    bool m_isWanted = false;
};
