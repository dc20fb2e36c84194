#pragma once

#include "browser/AddressProposals.h"

#include <QTimer>
#include <QWidget>

#include <optional>

class QComboBox;
class QKeyEvent;
class QLabel;
class QMimeData;
class ProposalList;
class ProposalSource;
class SafetySign;

/// The panel `picAddress` with the label and the address line `cboAddress`. The
/// list of the line holds the addresses visited in this window, the latest
/// first, no two equal (case-sensitive), without an upper bound. A text that was typed and
/// not opened gives way to the page's address by Escape, or when the focus leaves it.
/// It shows only the beginning of an address that is too long for the list (`isKept`).
///
/// While the user types, a pop-up proposes addresses. It only proposes: what was typed stays
/// until one is chosen, and comes back by Escape.
class AddressBar : public QWidget {
    Q_OBJECT
public:
    /// `source` outlives the bar.
    AddressBar(ProposalSource& source, QWidget* parent);

    QComboBox* cboAddress() const { return m_address; }
    SafetySign& safetySign() const { return *m_sign; }
    /// Puts `address` at the top of the list, in place of an entry that equals it, and
    /// shows it.
    void visited(const QString& address);
    /// Shows the address of a page that will be opened later.
    void announce(const QString& address);
    /// Has the bar paint what changes from now on along with the first picture of a page that has
    /// come. Each paint composes the whole frame with all its pages, and would hold up the new
    /// page in the middle of its load.
    void paintWithPage();
    /// No load is running any more: an address that was opened and has not been visited gives
    /// way to that of the page.
    void loadEnded();
    /// The left edge of the address line and the panel's fixed height, in pixels.
    int addressLeft() const;
    int panelHeight() const;
    void addressWidth(int width);
    /// Puts the cursor into the line, all of its text selected.
    void focusAddress();

signals:
    /// The user wants to open `address`: the text of the line, whole even where only its
    /// beginning is shown. It `isTyped` when the user has written it, or has changed what was
    /// there; else it is an address visited, chosen from the list or dropped.
    void entered(const QString& address, bool isTyped);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool keyPressed(const QKeyEvent& event);
    bool proposalKeyPressed(const QKeyEvent& event);
    void prepareProposals();
    void edited(const QString& text);
    void propose();
    void choose(int rows);
    void openProposal(const QString& address);
    bool isProposing() const;
    /// Sends the pop-up away; what was typed comes back.
    void dismissProposals();
    void focusLeft(Qt::FocusReason reason);
    bool dropped(const QMimeData& offered);
    QString address() const;
    void open();
    /// Brings back the address of the page in place of what was typed.
    void discardText();
    void showAddress(const QString& address);
    void showPage();
    /// Has the sign say nothing about a text that is not the page's address.
    void adjustSign();

    ProposalSource& m_source;
    QLabel* m_label;
    QComboBox* m_address;
    SafetySign* m_sign = nullptr;
    ProposalList* m_proposals = nullptr; ///< made when there is something to propose first
    KnownAddresses m_own;                ///< the line's list, made ready for proposals
    bool m_maybeMore = false;            ///< proposals are welcome that come to be known later
    std::optional<QString> m_typed;
    /// The address of the page; empty before the first one.
    QString m_shown;
    /// The text was opened, and its page has not been visited yet.
    bool m_isOpening = false;
    QTimer m_untilPainted;
};
