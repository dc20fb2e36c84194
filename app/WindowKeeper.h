#pragma once

#include "app/OpenWindowsFile.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QRect>
#include <QTimer>

class MDIForm1;
class QToolBar;
class frmBrowser;

/// Keeps on the disk which browser windows are open, and offers those of a run that was killed
/// in a bar of the frame. What was offered is kept, too, until the user has decided.
class WindowKeeper : public QObject {
    Q_OBJECT
public:
    /// Belongs to `frame`. `path` is the file; its folder is made when it is needed.
    WindowKeeper(MDIForm1& frame, const QString& path);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void watch(frmBrowser& window);
    void notePlaces();
    void changed();
    void keep();
    OpenWindows snapshot() const;

    void offer();
    void reopen();
    void placeFrame(const OpenWindows& wanted) const;
    /// Opens the windows, and returns those that there was no room for.
    QList<OpenWindows::Window> open(const OpenWindows& wanted);
    void place(frmBrowser& window, const OpenWindows::Window& wanted, Arrangement arrangement);
    void discard();

    MDIForm1& m_frame;
    OpenWindowsFile m_file;
    QTimer m_timer;
    QTimer m_placesTimer; ///< ends when control is back in the event loop
    /// Where each window was when it was last neither minimised nor maximised.
    QHash<const frmBrowser*, QRect> m_places;
    /// Of the run before, as long as the user has not decided about them.
    OpenWindows m_offered;
    QPointer<QToolBar> m_bar;
};
