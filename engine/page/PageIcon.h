#pragma once

#include "engine/page/WebVisits.h"

#include <QDeadlineTimer>
#include <QIcon>
#include <QTimer>
#include <QWebEnginePage>

/// The icon that a page has given itself, at most once in a second: a page may change it a
/// hundred times, and every change paints the frame anew.
class PageIcon : public QObject {
    Q_OBJECT
public:
    explicit PageIcon(QWebEnginePage& page);

signals:
    /// From the event loop. Null when the page has none. The icon of the page before stays for
    /// a moment, so that it does not flicker between two pages of a site.
    void changed(const QIcon& icon);

private:
    void tell();
    void tellSoon();

    QWebEnginePage& m_page;
    /// What was shown when the last load began.
    WebCommit m_before;
    QTimer m_timer;
    QDeadlineTimer m_notBefore;
};
