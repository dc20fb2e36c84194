#pragma once

#include "base/Prompt.h"
#include "pages/asking/PageLimits.h"

#include <QObject>

class PagePrompt;
class QUrl;

/// The dialogs that scripts of a page open, and the question whether a page may be left
/// that would lose what was typed into it. A page that does not stop can be silenced.
class ScriptDialogs : public QObject {
    Q_OBJECT
public:
    ScriptDialogs(PagePrompt& prompt, QObject* parent);

private:
    /// `question` has the script's own words.
    Prompt::Answer ask(const QUrl& site, Prompt::Question question);
    bool mayLeave();
    Prompt::Answer askOfferingSilence(Prompt::Question question);
    QUrl shown() const;

    PagePrompt& m_prompt;
    DialogLimit m_limit;
};
