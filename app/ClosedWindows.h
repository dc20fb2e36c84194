#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

class MDIForm1;
class frmBrowser;

/// The browser windows that were closed last in this run, to be opened again with the pages
/// that they went through. Belongs to the frame.
class ClosedWindows : public QObject {
    Q_OBJECT
public:
    explicit ClosedWindows(MDIForm1& frame);

    /// Opens the window that was closed last, and forgets it; does nothing without one.
    void reopenLast();

private:
    struct Closed {
        QString address;
        /// As the engine keeps them.
        QByteArray pages;
    };

    void note(const frmBrowser& window);

    MDIForm1& m_frame;
    QList<Closed> m_closed;
};
