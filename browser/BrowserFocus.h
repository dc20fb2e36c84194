#pragma once

#include <QObject>
#include <QPointer>

class AddressBar;
class QMdiSubWindow;
class QWidget;

/// Remembers whether the page or the address line of a browser window has the focus, and
/// keeps it there: the engine replaces the widget that shows the page for a page of
/// another site, and takes it away when the page's process dies; the toolkit hides the
/// window for a moment when its state changes.
///
/// Must be destroyed before the widgets that it was made with.
class BrowserFocus : public QObject {
    Q_OBJECT
public:
    struct Places {
        QMdiSubWindow& window;
        /// What holds the page, all that lies over it, and the bars.
        QWidget& client;
        /// The page's widget for good; the engine puts its own below it.
        QWidget& page;
        AddressBar& addressBar;
        QWidget& toolbar;
    };
    explicit BrowserFocus(const Places& places);

    /// The window becomes active with the focus in its page, or in its address line.
    void settle(bool inPage) { m_isInPage = inPage; }
    /// Gives the focus to the page or the address line, whichever had it.
    void restore();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Around a time when the window is hidden: the focus waits in the frame.
    void setAside();
    void takeBack();
    void remember(QWidget* now);
    void giveBack(const QWidget* before, const QWidget* now);
    /// Whether it is the page, a part of it, or lies over it; the bars do not.
    bool isOfPage(const QWidget& widget) const;

    Places m_places;
    bool m_isInPage = false;
    QPointer<QWidget> m_aside;
};
