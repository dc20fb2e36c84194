#include "engine/asking/ScriptDialogs.h"

#include "engine/asking/PagePrompt.h"
#include "engine/page/WebEnginePage.h"
#include "pages/asking/SiteText.h"

#include <QWebEngineHistory>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestInput = 5000;

} // namespace

ScriptDialogs::ScriptDialogs(AskingPage& asking, QObject* parent)
    : QObject(parent), m_asking(asking)
{
    asking.page().answerScripts(this);
    connect(&asking.page(), &WebEnginePage::userNavigates, this,
            [this] { m_silence.userNavigates(); });
    connect(&asking.page(), &WebEnginePage::navigationStarting, this,
            [this](const QUrl& url, bool isMainFrame) {
                if (isMainFrame) {
                    m_silence.navigationStarting(url);
                }
            });
}

PageAnswer ScriptDialogs::ask(const QUrl& site, const QString& text, PageQuestion question)
{
    m_silence.speaks(site, shown());
    if (m_silence.isSilenced())
        return {};
    question.title = siteName(site);
    question.text = siteName(site) + u" meldet:\n\n"_s + cleanText(text);
    return askOfferingSilence(question);
}

PageAnswer ScriptDialogs::askOfferingSilence(PageQuestion question)
{
    if (m_silence.offersSilence())
        question.checkBox = u"&Weitere Meldungen dieser Seite unterdrücken"_s;
    PageAnswer answer = m_asking.ask(question);
    if (answer.isChecked)
        m_silence.silence();
    return answer;
}

void ScriptDialogs::alert(const QUrl& site, const QString& text)
{
    ask(site, text, {});
}

bool ScriptDialogs::confirm(const QUrl& site, const QString& text)
{
    return ask(site, text, {.refuse = u"Abbrechen"_s}).isAccepted;
}

std::optional<QString> ScriptDialogs::prompt(const QUrl& site, const QString& text,
                                             const QString& preset)
{
    const PageAnswer answer =
        ask(site, text, {.refuse = u"Abbrechen"_s, .input = cleanLine(preset, longestInput)});
    return answer.isAccepted ? std::optional(answer.input) : std::nullopt;
}

QUrl ScriptDialogs::shown() const
{
    return m_asking.page().history()->currentItem().url();
}

bool ScriptDialogs::leave()
{
    m_silence.speaks(shown(), shown());
    // A script can put this question, too, and as often as any other.
    return m_silence.isSilenced() ||
           askOfferingSilence(
               {.title = siteName(m_asking.page().url()),
                .text = u"Diese Seite verlassen? Eingaben gehen möglicherweise verloren."_s,
                .accept = u"Verlassen"_s,
                .refuse = u"Bleiben"_s,
                .isRisky = true})
               .isAccepted;
}
