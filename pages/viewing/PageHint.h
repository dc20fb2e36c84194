#pragma once

#include <QLabel>
#include <QTimer>

class OverlayPlacer;

/// A short text over the upper edge of a page that goes by itself after a while. Clicks and
/// keys go to the page.
class PageHint : public QLabel {
    Q_OBJECT
public:
    /// Over `view`, with which it goes. It is hidden at first.
    explicit PageHint(QWidget* view);

    /// Shows the plain text `text` in the place of the previous one.
    void showFor(std::chrono::milliseconds time, const QString& text);

private:
    void place(const QRect& area);

    OverlayPlacer* m_placer;
    QTimer m_hideTimer;
};
