#pragma once

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
    /// the page's windowCloseRequested, or `unanswered`, follows unless the
    /// user wants to stay.
    bool begin();

signals:
    void unanswered();

private:
    void startWaiting();
    void wait();

    WebEnginePage& m_page;
    QTimer m_patience;
    int m_waited = 0;
    bool m_isAsking = false;
};
