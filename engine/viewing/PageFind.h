#pragma once

#include <QObject>
#include <QPointer>

class FindBar;
class QWebEnginePage;

/// The search in a page: its keys, its `FindBar`, and the search itself, which is the engine's.
class PageFind : public QObject {
    Q_OBJECT
public:
    /// Belongs to `page`; its bar lies over the view that shows it.
    explicit PageFind(QWebEnginePage* page);

    /// Makes Ctrl+F, F3 and Shift+F3 work in `window`.
    void addKeys(QWidget* window);

    void open();
    /// Hides the bar, and takes the marks off the page.
    void close();

private:
    /// The bar over the view that shows the page, made when it is first needed there; the last
    /// one, or null, while no view shows the page.
    FindBar* bar();
    void find(const QString& text, bool backwards, bool caseSensitive);
    void step(bool backwards);

    QWebEnginePage* m_page;
    QPointer<FindBar> m_bar;
    /// Numbers the searches: the engine also answers one that it has given up for the next
    /// (seen with Qt 6.4).
    quint32 m_lastSearch = 0;
};
