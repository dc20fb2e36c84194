#pragma once

#include <QObject>
#include <QWebEnginePage>

class PagePrompt;

/// Asks before a form is sent a second time because its answer is loaded once more: an
/// order would be placed twice.
class FormResending : public QObject {
    Q_OBJECT
public:
    FormResending(PagePrompt& prompt, QObject* parent);

private:
    void ask(QWebEnginePage::WebAction reload);

    PagePrompt& m_prompt;
    /// The question is open, or waits for its turn.
    bool m_isAsking = false;
};
