#pragma once

#include <QObject>

class QWebEnginePage;

/// Shows exports of the archive in the encoding that they have. The engine guesses the encoding
/// of a local file and takes the default one only where it has no guess (seen with Qt 6.4): a
/// file with few characters beyond ASCII may come out in another ("5 € 6 €" as "5 Ç 6 Ç").
class ExportEncoding : public QObject {
    Q_OBJECT
public:
    /// Belongs to `page`.
    explicit ExportEncoding(QWebEnginePage* page);

private:
    void check();

    QWebEnginePage* m_page;
};
