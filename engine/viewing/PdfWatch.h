#pragma once

#include <QObject>

class QWebEnginePage;

/// Knows whether a page shows a PDF document. The engine shows it in a viewer inside the page,
/// and neither zooms nor prints what is in the viewer when the page is told to (seen with
/// Qt 6.4).
class PdfWatch : public QObject {
    Q_OBJECT
public:
    /// Belongs to `page`.
    explicit PdfWatch(QWebEnginePage* page);

    bool isPdf() const { return m_isPdf; }

private:
    void askType();

    QWebEnginePage* m_page;
    bool m_isPdf = false;
};
