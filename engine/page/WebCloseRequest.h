#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

class WebEnginePage;

/// Asks a page whether it may be closed: its scripts can have the user asked
/// first. A page that does not answer is not waited for.
class WebCloseRequest : public QObject {
    Q_OBJECT
public:
    explicit WebCloseRequest(WebEnginePage& page);

    /// False when there is nothing to be asked, as no page is alive. Otherwise
    /// `closing` follows, unless the user wants to stay.
    bool begin();

signals:
    /// The page is about to have the user asked whether it may be closed.
    void asking();
    /// The page's window is to close: as the page itself wants it, or because the
    /// page does not answer.
    void closing();

private:
    void startWaiting();
    void wait();

    WebEnginePage& m_page;
    QTimer m_ticks;
    int m_waited = 0;          ///< ticks since the page was asked
    QElapsedTimer m_sinceStay; ///< since the user wanted to stay
    bool m_isAsking = false;
};
