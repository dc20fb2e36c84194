#pragma once

#include <QObject>
#include <QPointer>

#include <memory>

class QWebEngineFullScreenRequest;
class QWebEnginePage;
class QWebEngineView;

/// Shows a page on the whole screen when it asks for that. A view of its own
/// takes the page over meanwhile, so that its window stays as it is.
class PageFullScreen : public QObject {
    Q_OBJECT
public:
    /// Belongs to `page`, which `view` in `window` shows.
    PageFullScreen(QWidget* window, QWebEngineView* view, QWebEnginePage* page);
    ~PageFullScreen() override;
    Q_DISABLE_COPY_MOVE(PageFullScreen)

    /// Ends the full screen at once, if there is one. Not from within an event of
    /// the page.
    void leave();

signals:
    /// `screen` now shows the page, until it is destroyed.
    void entered(QWebEngineView* screen);
    /// The page is about to go back to its window.
    void leaving();

private:
    void answer(QWebEngineFullScreenRequest request);
    void follow();
    void enter();
    void endIt();
    void putBack();

    QWebEnginePage* m_page;
    QPointer<QWebEngineView> m_view;
    QPointer<QWebEngineView> m_screen;
    /// What the view shows meanwhile.
    std::unique_ptr<QWebEnginePage> m_standIn;
    QString m_site;
    bool m_isWanted = false;
};
