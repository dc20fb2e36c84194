#pragma once

#include <QStatusBar>

class QLabel;

/// A status bar with one panel over its whole width. A text that is too long
/// loses its middle.
class StatusPanel : public QStatusBar {
    Q_OBJECT
public:
    explicit StatusPanel(QWidget* parent);

    void panelText(const QString& text);
    const QString& panelText() const { return m_text; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showText();

    QLabel* m_panel;
    QString m_text;
};
