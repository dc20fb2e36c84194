#pragma once

#include "base/Prompt.h"
#include "browser/FrameReports.h"

#include <QPointer>
#include <QWebEnginePage>

class SentForms;

/// A page whose frames report themselves, which says when it is about to go
/// somewhere, and which asks the user through others.
class WebEnginePage : public QWebEnginePage {
    Q_OBJECT
public:
    /// `reports` is what the profile's script was made from; it outlives the page.
    WebEnginePage(QWebEngineProfile& profile, const FrameReports& reports, QObject* parent);

    /// While one lives, the page does, though its window can be closed.
    class Keeper {
    public:
        /// What goes on meanwhile: some work of the program's, or the user is asked, and the
        /// engine waits for the answer.
        enum class While { Working, Asking };

        explicit Keeper(WebEnginePage& page, While what = While::Working);
        ~Keeper();
        Q_DISABLE_COPY_MOVE(Keeper)

    private:
        QPointer<WebEnginePage> m_page;
        int m_questions;
    };

    /// The page's window has gone: the page follows when control is back in the
    /// event loop and nothing keeps it.
    void retire();
    bool isRetired() const { return m_isRetired; }
    /// Whether a question is open.
    bool isAsking() const { return m_questions > 0; }
    /// Whether anything keeps the page.
    bool isKept() const { return m_keepers > 0; }

    /// Loads what is shown once more, by `action`, as the user wants it. The answer to a form
    /// that was sent is not loaded before the user agrees: see `resendingWanted`.
    void reload(WebAction action = Reload);
    /// Whether the page shown is the answer to a form that was sent, so that loading it once
    /// more would send the form again.
    bool isFromSentForm() const;
    /// Whether what the page, or a frame of it, got last from `address`, as a document or a
    /// download, is the answer to a form that was sent.
    bool hasSentFormTo(const QUrl& address) const;

signals:
    void frameReported(const FrameReport& report);
    /// Something keeps the page from now on.
    void kept();
    /// The page, or one of its frames, is about to open `url`.
    void navigationStarting(const QUrl& url, bool isMainFrame);
    /// The page, or one of its frames, is about to ask a server or the disk for its document.
    void documentWanted();
    /// What the page was about to show is being saved as a file, or is not wanted.
    void downloadDecided();
    /// `action` would send the form once more that the page shown is the answer to.
    void resendingWanted(QWebEnginePage::WebAction action);
    /// The user, not a script, is about to send the page somewhere.
    void userNavigates();
    /// The user has just sent the page elsewhere, so that what it shows is not needed any more.
    void userLeaves();
    /// The user has ended the process of the page, which did not answer.
    void endedByUser();
    /// The user, or the page, wants to open `url`, which is for another program of the
    /// desktop. The page goes nowhere.
    void desktopAddressWanted(const QUrl& url, bool isUsersOwn);
    /// The page wants to go to an address that no program is to open, and goes nowhere.
    void navigationBarred(const QUrl& url);
    /// The engine has kept the page from a file of this computer: a link, or a part of the page.
    void fileBarred();
    /// A script in a frame of `site` says or asks something, in its own words. Who puts that
    /// to the user gives the answer before it returns; unanswered, nothing is accepted.
    void scriptAsks(const QUrl& site, const Prompt::Question& question, Prompt::Answer& answer);
    /// The page would lose what was typed into it. Who asks the user whether it may go says
    /// so before it returns; unanswered, it may.
    void scriptAsksToStay(bool& isLeaving);
    /// The page has the user asked whether it may be left, and the answer.
    void leaveAsked();
    void leaveAnswered(bool isLeaving);

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
    void javaScriptAlert(const QUrl& site, const QString& text) override;
    bool javaScriptConfirm(const QUrl& site, const QString& text) override;
    bool javaScriptPrompt(const QUrl& site, const QString& text, const QString& preset,
                          QString* result) override;
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message,
                                  int lineNumber, const QString& sourceId) override;

private:
    bool askToLeave();

    const FrameReports& m_reports;
    SentForms* m_sentForms;
    int m_keepers = 0;
    int m_questions = 0;
    bool m_isRetired = false;
};
