#include "engine/asking/ScriptDialogs.h"

#include "engine/asking/PagePrompt.h"
#include "engine/page/WebEnginePage.h"
#include "pages/asking/SiteText.h"

#include <QWebEngineHistory>

using namespace Qt::StringLiterals;

ScriptDialogs::ScriptDialogs(PagePrompt& prompt, QObject* parent)
    : QObject(parent), m_prompt(prompt)
{
    const WebEnginePage& page = prompt.page();
    connect(&page, &WebEnginePage::userNavigates, this, [this] { m_limit.userNavigates(); });
    connect(&page, &WebEnginePage::navigationStarting, this,
            [this](const QUrl& url, bool isMainFrame) {
                if (isMainFrame)
                    m_limit.navigationStarting(url);
            });
    connect(&page, &WebEnginePage::scriptAsks, this,
            [this](const QUrl& site, const Prompt::Question& question, Prompt::Answer& answer) {
                answer = ask(site, question);
            });
    connect(&page, &WebEnginePage::scriptAsksToStay, this,
            [this](bool& isLeaving) { isLeaving = mayLeave(); });
}

Prompt::Answer ScriptDialogs::ask(const QUrl& site, Prompt::Question question)
{
    constexpr qsizetype longestInput = 5000;
    m_limit.dialogStarting(site, shown());
    if (m_limit.isSilenced())
        return {};
    question.title = siteName(site);
    question.text = siteName(site) + u" meldet:\n\n"_s + cleanText(question.text);
    if (question.input)
        question.input = cleanLine(*question.input, longestInput);
    return askOfferingSilence(question);
}

bool ScriptDialogs::mayLeave()
{
    m_limit.dialogStarting(shown(), shown());
    // A script can put this question, too, and as often as any other.
    return m_limit.isSilenced() ||
           askOfferingSilence(
               {.title = siteName(m_prompt.page().url()),
                .text = u"Diese Seite verlassen? Eingaben gehen möglicherweise verloren."_s,
                .accept = u"Verlassen"_s,
                .refuse = u"Bleiben"_s,
                .isRisky = true})
               .isAccepted;
}

Prompt::Answer ScriptDialogs::askOfferingSilence(Prompt::Question question)
{
    if (m_limit.offersSilence())
        question.checkBox = u"&Weitere Meldungen dieser Seite unterdrücken"_s;
    Prompt::Answer answer = m_prompt.ask(question);
    if (answer.isChecked)
        m_limit.silence();
    return answer;
}

QUrl ScriptDialogs::shown() const
{
    return m_prompt.page().history()->currentItem().url();
}
