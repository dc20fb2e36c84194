#pragma once

#include "browser/PageSafety.h"

#include <QToolButton>

class QLineEdit;

/// The sign at the left end of the address line that says how safe the page is. The text of the
/// line begins behind it. While the line holds something else than the page's address, the sign
/// says nothing, as it would seem to be about that.
class SafetySign : public QToolButton {
    Q_OBJECT
public:
    /// Lies in `line`.
    explicit SafetySign(QLineEdit* line);

    void safety(const PageSafety& safety);
    /// Whether the text of the line is the address of the page.
    void isOfPage(bool isOfPage);

protected:
    void enterEvent(QEnterEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showState();
    void place();

    QLineEdit* m_line;
    PageSafety m_safety;
    bool m_isOfPage = true;
};
