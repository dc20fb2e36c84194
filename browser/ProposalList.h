#pragma once

#include "browser/AddressProposals.h"

#include <QListWidget>

#include <optional>

/// The pop-up below an address line, or above it where the screen ends: a row for each
/// proposal, title and address. It never takes the focus; the line moves its choice.
///
/// While it is shown it watches for what sends a pop-up away: a press elsewhere, and the
/// line's window being moved, sized, hidden or left.
class ProposalList : public QListWidget {
    Q_OBJECT
public:
    /// `line` owns the pop-up.
    explicit ProposalList(QWidget* line);

    /// Shows these, none of them chosen; hides without any.
    void propose(const std::vector<KnownAddress>& proposals);
    /// The address of the chosen row, if any.
    std::optional<QString> choice() const;
    /// Moves the choice; behind the last row and before the first one there is none.
    void step(int rows);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// A row was clicked.
    void addressClicked(const QString& address);
    /// The user has turned to something else.
    void dismissed();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void place();
    bool isElsewhere(const QWidget& widget) const;

    QWidget* m_line;
    int m_choice = -1;
};
