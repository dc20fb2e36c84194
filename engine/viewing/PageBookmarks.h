#pragma once

#include "pages/viewing/BookmarkPage.h"

#include <QObject>
#include <QPointer>

#include <optional>

class BookmarkBar;
class QWebEngineView;
class Shell;
class WebEnginePage;

/// Offers to take the bookmarks of a page into the archive, when the page is a file of them.
class PageBookmarks : public QObject {
    Q_OBJECT
public:
    /// Belongs to `page`. The offer lies over `view`; `shell` outlives the page.
    PageBookmarks(Shell& shell, WebEnginePage* page, QWebEngineView* view);

    /// The keys of the offer work in `window`.
    void addKeys(QWidget* window);

private:
    /// Asks the document shown, which may be another one than before.
    void look();
    void withdraw();
    void offer(const std::optional<BookmarkOffer>& offer);
    void read();
    void ask(const QString& script);
    void answered(const QString& answer);
    void stop();
    void handOver();

    Shell& m_shell;
    WebEnginePage* m_page;
    QPointer<QWebEngineView> m_view;
    QPointer<BookmarkBar> m_bar;
    std::optional<BookmarkOffer> m_offer;
    /// While the bookmarks are being read.
    std::optional<BookmarkPageReader> m_reader;
    /// The document whose offer the user has closed.
    double m_declined = -1;
    /// Counts what the page was asked, as an answer may come when nobody wants it any more.
    int m_round = 0;
};
