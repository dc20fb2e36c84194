#include "engine/asking/DesktopLinks.h"

#include "engine/asking/PagePrompt.h"
#include "engine/page/WebEnginePage.h"
#include "pages/asking/PageInput.h"
#include "pages/asking/QuestionDesk.h"
#include "pages/asking/SiteText.h"

#include <QDesktopServices>

using namespace Qt::StringLiterals;

namespace {

/// How long after a click the page's answer to it may take.
constexpr qint64 clickLasts = 1000; // milliseconds

} // namespace

DesktopLinks::DesktopLinks(AskingPage& asking, const PageInput& input, QObject* parent)
    : QObject(parent), m_asking(asking)
{
    connect(&input, &PageInput::used, this, [this] { m_sinceInput.start(); });
    connect(&asking.page(), &WebEnginePage::desktopAddressWanted, this, &DesktopLinks::met);
}

bool DesktopLinks::takeClick()
{
    const bool isRecent = m_sinceInput.isValid() && m_sinceInput.elapsed() < clickLasts;
    m_sinceInput.invalidate();
    return isRecent;
}

void DesktopLinks::met(const QUrl& url, bool isUsersOwn)
{
    if (isUsersOwn || takeClick()) {
        const QString asker = isUsersOwn ? QString() : siteName(m_asking.page().url());
        m_asking.whenItIsOurTurn(this, [this, url, asker] { open(url, asker); });
    }
}

void DesktopLinks::open(const QUrl& url, const QString& asker)
{
    const QString address = cleanLine(url.toString(QUrl::FullyEncoded));
    const bool mayOpen =
        m_asking.desk().desktopSchemes.contains(url.scheme()) || ask(url, address, asker);
    if (mayOpen && !QDesktopServices::openUrl(url)) {
        m_asking.ask({.title = u"Anderes Programm"_s,
                      .text = u"Für „%1“ ist kein Programm eingerichtet."_s.arg(address)});
    }
}

bool DesktopLinks::ask(const QUrl& url, const QString& address, const QString& asker)
{
    constexpr qsizetype longestScheme = 20;
    const QString site = asker.isEmpty() ? QString() : asker + u":\n\n"_s;
    const PageAnswer answer =
        m_asking.ask({.title = u"Anderes Programm"_s,
                      .text = site + u"Soll „"_s + address +
                              u"“ mit dem zugehörigen Programm geöffnet werden?"_s,
                      .accept = u"Öffnen"_s,
                      .refuse = u"Abbrechen"_s,
                      .isRisky = true,
                      .checkBox = u"Adressen mit „%1:“ künftig ohne &Frage öffnen"_s.arg(
                          cleanLine(url.scheme(), longestScheme))});
    if (answer.isAccepted && answer.isChecked)
        m_asking.desk().desktopSchemes.insert(url.scheme());
    return answer.isAccepted;
}
