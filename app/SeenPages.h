#pragma once

#include <QObject>
#include <QRegion>

class QMdiArea;
class frmBrowser;

/// Tells the engine of each browser window whether any of its page can be seen, so that pages
/// nobody sees cost nothing: those that other windows cover wholly, that lie outside the area
/// as it is scrolled, whose window is minimised or has no room for a page, and all of a frame
/// that is minimised. The page of the active window counts as seen: it is the one with the
/// focus, and is covered only for a moment.
class SeenPages : public QObject {
    Q_OBJECT
public:
    /// Owned by `area`.
    explicit SeenPages(QMdiArea& area);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void watch(frmBrowser& window);
    /// Looks once when control is back in the event loop, however often it is called before.
    void lookLater();
    void look();

    QMdiArea& m_area;
    bool m_willLook = false;
};
