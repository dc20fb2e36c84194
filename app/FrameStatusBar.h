#pragma once

#include <QStatusBar>

class QLabel;

/// The frame's status bar: three fixed panels, of which the third shows the
/// engine's status text and takes all the room. A long text is cut off with
/// dots; it never widens the frame.
class FrameStatusBar : public QStatusBar {
    Q_OBJECT
public:
    explicit FrameStatusBar(QWidget* parent);

    QString panelText() const { return m_text; }
    void panelText(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showText();

    QLabel* m_panel3;
    QString m_text;
};
