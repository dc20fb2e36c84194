#include "engine/asking/FormResending.h"

#include "engine/asking/PagePrompt.h"
#include "engine/page/WebEnginePage.h"
#include "pages/asking/SiteText.h"

using namespace Qt::StringLiterals;

FormResending::FormResending(PagePrompt& prompt, QObject* parent)
    : QObject(parent), m_prompt(prompt)
{
    connect(&prompt.page(), &WebEnginePage::resendingWanted, this,
            [this](QWebEnginePage::WebAction reload) {
                if (!std::exchange(m_isAsking, true))
                    m_prompt.session().askInTurn(this, [this, reload] { ask(reload); });
            });
}

void FormResending::ask(QWebEnginePage::WebAction reload)
{
    WebEnginePage& page = m_prompt.page();
    const QUrl address = page.url();
    const bool isAgreed =
        m_prompt
            .ask({.title = siteName(address),
                  .text = u"Diese Seite wurde mit gesendeten Formulardaten aufgebaut. Beim "
                          "Aktualisieren werden sie noch einmal gesendet.\n\nWas damit ausgelöst "
                          "wurde, etwa eine Bestellung, kann dadurch ein zweites Mal geschehen."_s,
                  .accept = u"&Erneut senden"_s,
                  .refuse = u"Abbrechen"_s,
                  .isRisky = true})
            .isAccepted;
    m_isAsking = false;
    // The page may have gone on by itself meanwhile.
    if (isAgreed && !page.isRetired() && page.url() == address && page.isFromSentForm())
        page.triggerAction(reload);
}
