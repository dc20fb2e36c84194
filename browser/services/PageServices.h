#pragma once

#include "browser/services/AskingPage.h"

#include <QObject>

class QWebEngineView;
class Shell;
class WebEnginePage;
struct QuestionDesk;

/// What one page offers its user besides its content: each service is a small
/// object of its own that this one makes. It goes with the page, which may be a
/// while after its window.
class PageServices : public QObject {
    Q_OBJECT
public:
    /// `window` is the widget that holds `view`; keys of the services work in all
    /// of it. `shell` and `desk` outlive the page; it belongs to `page`.
    PageServices(Shell& shell, QWidget* window, QWebEngineView* view, WebEnginePage* page,
                 QuestionDesk& desk);

private:
    AskingPage m_asking;
};
