#pragma once

#include <QObject>
#include <QPointer>

class QWebEnginePage;
class QWebEngineView;
class Shell;

/// The engine's tools for developers, in a window of their own for each page that is inspected.
/// The window goes with the page.
class PageInspector : public QObject {
    Q_OBJECT
public:
    /// Belongs to `page`.
    PageInspector(Shell& shell, QWebEnginePage* page);
    ~PageInspector() override;

    /// Opens the window, brings it to the front, or closes it if it is there already.
    void toggle();

private:
    void open();
    void nameWindow();

    Shell& m_shell;
    QWebEnginePage* m_page;
    QPointer<QWebEngineView> m_window;
};
