#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

/// Covers the view of a page that can no longer be shown because its process has ended, says
/// so, and offers to load the page again. It never does so by itself.
class CrashOverlay : public QFrame {
    Q_OBJECT
public:
    /// Belongs to `view`, over which it lies. It is hidden at first.
    explicit CrashOverlay(QWidget* view);

    /// `processStatus` says how the process has ended, as the system does (wait).
    void appear(int processStatus);
    /// The user has the process ended: the next time the overlay appears, it says so.
    void expectEnd() { m_isEndExpected = true; }
    /// Leaves the focus, if it has it, to the page. To be called when the page begins to load
    /// and once more when it is there: only then has the engine a widget for it.
    void vanish();

    /// Hands the focus on to the button when the view gets it.
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void reloadWanted();

private:
    bool isFocusUnder() const;

    QWidget* m_view;
    QLabel* m_headline;
    QLabel* m_reason;
    QPushButton* m_reload;
    bool m_isEndExpected = false;
};
