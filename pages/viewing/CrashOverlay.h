#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

/// Covers the view of a page that can no longer be shown, says why, and offers
/// to load the page again.
class CrashOverlay : public QFrame {
    Q_OBJECT
public:
    /// Over `view`, with which it goes.
    explicit CrashOverlay(QWidget* view);

    void appear(const QString& reason);
    /// Leaves the focus, if it has it, to the page. To be called once more when the
    /// page is there: only then has the engine a widget for it.
    void vanish();

    /// Hands a focus that the view gets on to the button.
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void reloadWanted();

private:
    bool isFocusUnder() const;

    QWidget* m_view;
    QLabel* m_headline;
    QLabel* m_reason;
    QPushButton* m_reload;
};
