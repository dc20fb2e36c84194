#pragma once

#include <QStatusBar>

class ElidedLabel;

/// The frame's status bar: three fixed panels, of which the third shows the
/// engine's status text and takes all the room.
class FrameStatusBar : public QStatusBar {
    Q_OBJECT
public:
    explicit FrameStatusBar(QWidget* parent);

    void panelText(const QString& text);

private:
    ElidedLabel* m_panel3;
};
