#pragma once

#include "engine/asking/PagePrompt.h"
#include "pages/asking/PageInput.h"

#include <QObject>

class ProfileServices;
class QWebEngineView;
class Shell;
class WebEnginePage;

/// What one page offers its user besides its content: each service is a small
/// object of its own that this one makes. It goes with the page, which may be a
/// while after its window.
class PageServices : public QObject {
    Q_OBJECT
public:
    /// `window` is the widget that holds `view`; keys of the services work in all
    /// of it. `shell` and `session` outlive the page, `profile` its window; it belongs
    /// to `page`.
    PageServices(Shell& shell, ProfileServices& profile, PromptSession& session, QWidget* window,
                 QWebEngineView* view, WebEnginePage* page);

private:
    void serveUser(QWebEngineView* view);
    void serveViewing(Shell& shell, ProfileServices& profile, QWidget* window,
                      QWebEngineView* view);

    WebEnginePage* m_page;
    PagePrompt m_prompt;
    PageInput m_input;
};
