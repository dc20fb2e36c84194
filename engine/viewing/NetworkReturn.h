#pragma once

#include <QObject>
#include <QTimer>

#include <memory>

class QWebEngineLoadingInfo;
class RouteWatch;
class WebEnginePage;

/// Loads a page once more that could not be loaded for want of a network, when there is one
/// again. The engine says in its place that there is no network, and leaves it at that (seen
/// with Qt 6.4).
class NetworkReturn : public QObject {
    Q_OBJECT
public:
    /// Belongs to `page`.
    explicit NetworkReturn(WebEnginePage* page);
    ~NetworkReturn() override;

private:
    void loadingChanged(const QWebEngineLoadingInfo& load);
    void watch();
    void reload();

    WebEnginePage* m_page;
    /// Only while a page is loading, as a way may come between the attempt that failed and the
    /// word of it, and while the page that stands there tells of such an error.
    std::unique_ptr<RouteWatch> m_watch;
    QTimer m_settling;
};
