#pragma once

#include "pages/viewing/ZoomSteps.h"

#include <QObject>
#include <QPointer>

class PageHint;
class PdfWatch;
class QWebEnginePage;
class QWebEngineView;
class QWheelEvent;

/// How large a page is shown, by keys, wheel and menu. The size belongs to the page's window:
/// it stays when the window goes to another address.
class PageZoom : public QObject {
    Q_OBJECT
public:
    /// Belongs to `page`, as `pdf` does.
    PageZoom(QWebEnginePage* page, const PdfWatch& pdf);

    /// Makes the keys work in `window`, and Ctrl with the wheel over `view`.
    void attachTo(QWidget* window, QWebEngineView* view);

    void zoomIn() { step(1); }
    void zoomOut() { step(-1); }
    void reset();
    /// False for a PDF document: its viewer has no size of its own to go back to.
    bool canReset() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void step(int turns);
    void zoom(int percent);
    void apply();
    void filterWheel(QObject* child);
    void zoomPdf(int turns);
    void turnWheel(const QWheelEvent& event);

    QWebEnginePage* m_page;
    const PdfWatch& m_pdf;
    QPointer<PageHint> m_hint;
    int m_percent = normalZoom;
    /// What the wheel has turned beyond whole steps, in eighths of a degree.
    int m_turned = 0;
};
