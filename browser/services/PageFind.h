#pragma once

#include <QObject>
#include <QPointer>

class FindBar;
class QWebEnginePage;
class QWebEngineView;

/// The search in a page: its keys, its bar, and the engine's marks.
class PageFind : public QObject {
    Q_OBJECT
public:
    /// Belongs to `page`; its keys work in `window`, its bar lies over `view`.
    PageFind(QWidget* window, QWebEngineView* view, QWebEnginePage* page);

    void open();

private:
    /// The bar, made when it is first wanted; null once the view is gone.
    FindBar* bar();
    void find(const QString& text, bool backwards, bool caseSensitive);
    void step(bool backwards);

    QWebEnginePage* m_page;
    QPointer<QWebEngineView> m_view;
    QPointer<FindBar> m_bar;
    /// Counts the searches: the engine answers one that it gives up, too.
    quint32 m_turn = 0;
};
