#pragma once

#include <QObject>

class QWidget;

/// Brings a window back onto its screen when it has grown over the lower or the right
/// edge, as far as its upper left corner stays there. Belongs to the window.
class StaysOnScreen : public QObject {
    Q_OBJECT
public:
    explicit StaysOnScreen(QWidget* window);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void moveBack();

    QWidget* m_window;
};
