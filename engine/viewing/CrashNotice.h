#pragma once

#include <QObject>

class QWebEngineView;
class WebEnginePage;

/// Tells the user when a page can no longer be shown because the process behind
/// it has ended, and loads it again on demand, never by itself.
class CrashNotice : public QObject {
    Q_OBJECT
public:
    /// `view` may go before the page.
    CrashNotice(WebEnginePage& page, QWebEngineView* view, QObject* parent);
};
