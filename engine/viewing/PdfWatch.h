#pragma once

#include <QObject>

class QWebEnginePage;

/// Knows whether a page shows a PDF document. The engine shows it in a viewer
/// of its own inside the page, which neither the page's size nor its print
/// reaches.
class PdfWatch : public QObject {
    Q_OBJECT
public:
    /// Belongs to `page`.
    explicit PdfWatch(QWebEnginePage* page);

    bool isPdf() const { return m_isPdf; }

private:
    void look();

    QWebEnginePage* m_page;
    bool m_isPdf = false;
};
