#include "browser/services/ScriptDialogs.h"

#include "browser/WebEnginePage.h"
#include "browser/services/AskingPage.h"
#include "browser/services/SiteText.h"

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
                    m_target = url;
                }
            });
    // Only what was navigated to: a script gives its page any address it likes.
    connect(&asking.page(), &QWebEnginePage::urlChanged, this, [this](const QUrl& url) {
        if (url == m_target) {
            m_silence.movedTo(url);
        }
    });
}

PageAnswer ScriptDialogs::ask(const QUrl& site, const QString& text, PageQuestion question)
{
    if (m_silence.isSilenced()) {
        return {};
    }
    question.title = siteName(site);
    question.text = siteName(site) + u" meldet:\n\n"_s + cleanText(text);
    return askOfferingSilence(question);
}

PageAnswer ScriptDialogs::askOfferingSilence(PageQuestion question)
{
    if (m_silence.offersSilence()) {
        question.checkBox = u"&Weitere Meldungen dieser Seite unterdrücken"_s;
    }
    PageAnswer answer = m_asking.ask(question);
    if (answer.isChecked) {
        m_silence.silence();
    }
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

bool ScriptDialogs::leave()
{
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
