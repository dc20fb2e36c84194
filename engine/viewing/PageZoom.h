#pragma once

#include <QObject>
#include <QPointer>

class PageHint;
class PdfWatch;
class WebEnginePage;
class QWebEngineView;
class QWheelEvent;
class SiteZooms;

/// How large a page is shown, by keys, wheel and menu. The size belongs to the page's site.
class PageZoom : public QObject {
    Q_OBJECT
public:
    /// Belongs to `page`, as `pdf` does, which may be there for a while after `zooms`.
    PageZoom(WebEnginePage* page, const PdfWatch& pdf, SiteZooms& zooms);

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
    /// The site of the page shown.
    QString site() const;
    int percentOf(const QString& site) const;
    void apply(const QString& site);
    void filterWheel(QObject* child);
    void zoomPdf(int turns);
    void turnWheel(const QWheelEvent& event);

    WebEnginePage* m_page;
    const PdfWatch& m_pdf;
    QPointer<SiteZooms> m_zooms;
    QPointer<PageHint> m_hint;
    /// What the wheel has turned beyond whole steps, in eighths of a degree.
    int m_turned = 0;
};
