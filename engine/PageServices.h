#pragma once

#include "address/SearchAddress.h"
#include "engine/asking/PagePrompt.h"
#include "pages/asking/PageInput.h"

#include <QObject>

class ProfileServices;
class QWebEngineView;
class Shell;
class WebEnginePage;

/// What one page offers its user besides its content. Each service is an object of its own
/// that this one makes and connects; it belongs to this one or to the page. All go with the
/// page, which may be a while after its window.
class PageServices : public QObject {
    Q_OBJECT
public:
    /// Belongs to `page`. `window` is the widget that holds `view`; keys of the services work
    /// in all of it. `shell` and `session` outlive the page, `profile` outlives the window.
    PageServices(Shell& shell, ProfileServices& profile, PromptSession& session,
                 SearchResolver search, QWidget* window, QWebEngineView* view, WebEnginePage* page);

private:
    void makeAsking();
    void makeViewing(Shell& shell, ProfileServices& profile, QWidget* window, QWebEngineView* view);
    void coverCrashes(QWebEngineView* view);
    /// Opens a window that searches for a text of the page.
    void search(Shell& shell, const QString& text);
    void useProfile(ProfileServices& profile, QWidget* window);

    WebEnginePage* m_page;
    PagePrompt m_prompt;
    PageInput m_input;
    SearchResolver m_search;
};
