#pragma once

#include <QLabel>
#include <QTimer>

class OverlayPlacer;

/// A short text over the upper edge of a page that goes by itself. Clicks and
/// keys pass it by.
class PageHint : public QLabel {
    Q_OBJECT
public:
    /// Over `page`, with which it goes.
    explicit PageHint(QWidget* page);

    /// Shows `text`, plain, in the place of the previous one.
    void showFor(std::chrono::milliseconds time, const QString& text);

private:
    void place(const QRect& area);

    OverlayPlacer* m_over;
    QTimer m_end;
};
