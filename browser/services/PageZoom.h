#pragma once

#include "browser/services/ZoomSteps.h"

#include <QObject>
#include <QPointer>

class PageHint;
class QWebEnginePage;
class QWebEngineView;
class QWheelEvent;

/// How large a page is shown, by keys, wheel and menu. The size belongs to the
/// window: it stays when the window goes on to another page.
class PageZoom : public QObject {
    Q_OBJECT
public:
    /// Belongs to `page`.
    explicit PageZoom(QWebEnginePage* page);

    /// Makes the keys work in `window`, and the wheel over `view`.
    void serve(QWidget* window, QWebEngineView* view);

    void zoomIn() { zoom(zoomedIn(m_percent)); }
    void zoomOut() { zoom(zoomedOut(m_percent)); }
    void reset() { zoom(normalZoom); }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void zoom(int percent);
    void apply();
    void watch(QObject* part);
    void turnWheel(const QWheelEvent& event);

    QWebEnginePage* m_page;
    QPointer<PageHint> m_hint;
    int m_percent = normalZoom;
    /// What the wheel has turned beyond whole steps, in eighths of a degree.
    int m_turned = 0;
};
