#pragma once

#include <QFrame>

class QLabel;
class QLineEdit;
class QToolButton;

/// What every line for searching has: the text, the buttons for the previous and the next place
/// and for closing, and how many places there are. It neither searches nor lays itself out.
class FindControls : public QFrame {
    Q_OBJECT
public:
    /// `where` is what is searched, as in "Auf der Seite suchen".
    FindControls(const QString& where, QWidget* parent);

    QString text() const;
    /// The search has found `count` places, of which number `active` (from 1 on) is the one
    /// shown; 0 when it is none of them. A negative `count`: the result is not known yet.
    void showResult(int count, int active);
    /// Hides the controls.
    void close();

signals:
    void typed();
    /// The next place is wanted, or the previous one.
    void stepped(bool backwards);
    /// The controls were shown, and are not any more.
    void closed();

protected:
    /// Shows the controls, the text selected, with the cursor in it.
    void open();
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    QLineEdit* m_text;
    QLabel* m_hits;
    QToolButton* m_previous;
    QToolButton* m_next;
    QToolButton* m_close;

private:
    QToolButton* addButton(const QString& name, const QString& icon, const QString& text);
    void markMissing(bool missing);
};
