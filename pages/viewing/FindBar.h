#pragma once

#include <QFrame>

class QCheckBox;
class QLabel;
class QLineEdit;
class QToolButton;
class OverlayPlacer;

/// The bar for searching in a page, over its upper right corner. It knows no
/// page: it asks for each search, and is told what came of it.
class FindBar : public QFrame {
    Q_OBJECT
public:
    /// Over `page`, with which it goes.
    explicit FindBar(QWidget* page);

    QString text() const;
    bool isCaseSensitive() const;
    /// Shows the bar, its text selected, with the cursor in it.
    void open();
    /// The search has found `count` places, of which number `active` (from 1 on)
    /// is the one shown.
    void hits(int count, int active);
    /// Asks for the next place, or the previous one.
    void step(bool backwards);
    /// Asks for the text once more, as in a page that has changed.
    void again();
    void close();

signals:
    /// An empty text takes the marks off the page.
    void find(const QString& text, bool backwards, bool caseSensitive);
    /// The bar is hidden; the focus belongs to the page.
    void closed();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QToolButton* addButton(const QString& name, const QString& icon, const QString& text);
    void layOut(QWidget* page);
    void textChanged();
    void place(const QRect& area);
    void markMissing(bool missing);

    QLineEdit* m_text;
    QLabel* m_hits;
    QCheckBox* m_case;
    QToolButton* m_previous;
    QToolButton* m_next;
    QToolButton* m_close;
    OverlayPlacer* m_over = nullptr;
};
