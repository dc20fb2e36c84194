#pragma once

#include <QFrame>

class QCheckBox;
class QLabel;
class QLineEdit;
class QToolButton;
class OverlayPlacer;

/// The bar for searching in a page, over its upper right corner. It does not search itself: it
/// asks for each search by a signal, and is told the result.
class FindBar : public QFrame {
    Q_OBJECT
public:
    /// Over `view`, with which it goes. It is hidden at first.
    explicit FindBar(QWidget* view);

    QString text() const;
    bool isCaseSensitive() const;
    /// Shows the bar, its text selected, with the cursor in it.
    void open();
    /// The search has found `count` places, of which number `active` (from 1 on) is the one
    /// shown. A negative `count`: the result is not known yet.
    void showResult(int count, int active);
    /// Asks for the next place, or the previous one.
    void step(bool backwards);
    /// Asks for the text from the beginning, as in a page that has changed. Does nothing while
    /// the bar is hidden.
    void searchAnew();
    void close();

signals:
    /// `text` is to be searched for. An empty text takes the marks off the page.
    void find(const QString& text, bool backwards, bool caseSensitive);
    /// The bar is hidden; the focus belongs to the page.
    void closed();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QToolButton* addButton(const QString& name, const QString& icon, const QString& text);
    void layOut(QWidget* view);
    void textChanged();
    void place(const QRect& area);
    void markMissing(bool missing);

    QLineEdit* m_text;
    QLabel* m_hits;
    QCheckBox* m_case;
    QToolButton* m_previous;
    QToolButton* m_next;
    QToolButton* m_close;
    OverlayPlacer* m_placer = nullptr;
};
