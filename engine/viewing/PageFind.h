#pragma once

#include <QObject>
#include <QPointer>

class FindBar;
class QWebEnginePage;

/// The search in a page: its keys, its bar, and the engine's marks.
class PageFind : public QObject {
    Q_OBJECT
public:
    /// Belongs to `page`; its bar lies over the view that shows it.
    explicit PageFind(QWebEnginePage* page);

    /// Makes the keys work in `window`.
    void serve(QWidget* window);

    void open();
    /// Takes the bar away, and the marks with it.
    void close();

private:
    /// The bar, made when a view first wants it; null while none shows the page.
    FindBar* bar();
    void find(const QString& text, bool backwards, bool caseSensitive);
    void step(bool backwards);

    QWebEnginePage* m_page;
    QPointer<FindBar> m_bar;
    /// Counts the searches: the engine answers one that it gives up, too.
    quint32 m_turn = 0;
};
