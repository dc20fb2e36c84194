#include "engine/asking/DesktopLinks.h"

#include "engine/asking/PagePrompt.h"
#include "engine/page/WebEnginePage.h"
#include "pages/asking/PageInput.h"
#include "pages/asking/SiteText.h"

#include <QDesktopServices>

using namespace Qt::StringLiterals;

namespace {

/// How long after a click the page's answer to it may take.
constexpr qint64 clickLasts = 1000; // milliseconds

} // namespace

DesktopLinks::DesktopLinks(PagePrompt& prompt, const PageInput& input, QObject* parent)
    : QObject(parent), m_prompt(prompt)
{
    connect(&input, &PageInput::used, this, [this] { m_sinceInput.start(); });
    connect(&prompt.page(), &WebEnginePage::desktopAddressWanted, this, &DesktopLinks::requested);
    connect(&prompt.page(), &WebEnginePage::fileBarred, this, [this] {
        if (takeClick())
            emit m_prompt.page().navigationBarred(QUrl(u"file:"_s));
    });
}

bool DesktopLinks::takeClick()
{
    const bool isRecent = m_sinceInput.isValid() && m_sinceInput.elapsed() < clickLasts;
    m_sinceInput.invalidate();
    return isRecent;
}

void DesktopLinks::requested(const QUrl& url, bool isUsersOwn)
{
    if (isUsersOwn || takeClick()) {
        const QString site = isUsersOwn ? QString() : siteName(m_prompt.page().url());
        m_prompt.session().askInTurn(this, [this, url, site] { open(url, site); });
    }
}

void DesktopLinks::open(const QUrl& url, const QString& site)
{
    const QString address = cleanLine(url.toString(QUrl::FullyEncoded));
    const bool mayOpen =
        m_prompt.session().desktopSchemes.contains(url.scheme()) || ask(url, address, site);
    if (mayOpen && !QDesktopServices::openUrl(url)) {
        m_prompt.ask({.title = u"Anderes Programm"_s,
                      .text = u"Für „%1“ ist kein Programm eingerichtet."_s.arg(address)});
    }
}

bool DesktopLinks::ask(const QUrl& url, const QString& address, const QString& site)
{
    constexpr qsizetype longestScheme = 20;
    const QString whoAsks = site.isEmpty() ? QString() : site + u":\n\n"_s;
    const Prompt::Answer answer =
        m_prompt.ask({.title = u"Anderes Programm"_s,
                      .text = whoAsks + u"Soll „"_s + address +
                              u"“ mit dem zugehörigen Programm geöffnet werden?"_s,
                      .accept = u"Öffnen"_s,
                      .refuse = u"Abbrechen"_s,
                      .isRisky = true,
                      .checkBox = u"Adressen mit „%1:“ künftig ohne &Frage öffnen"_s.arg(
                          cleanLine(url.scheme(), longestScheme))});
    if (answer.isAccepted && answer.isChecked) {
        m_prompt.session().desktopSchemes.insert(url.scheme());
        emit m_prompt.session().answersChanged();
    }
    return answer.isAccepted;
}
