#include "engine/page/WebEnginePage.h"

#include "engine/page/SentForms.h"
#include "engine/page/WebErrorPage.h"
#include "pages/asking/UrlSchemes.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QIODevice>
#include <QWebEngineHistory>

using namespace Qt::StringLiterals;

namespace {

/// The engine asks this by way of a question of a script.
QString leaveQuestion()
{
    return QCoreApplication::translate("QWebEnginePage",
                                       "Are you sure you want to leave this page? "
                                       "Changes that you made may not be saved.");
}

/// The version of the stored history that is read here; Qt 6.4 and 6.8 write it.
constexpr int historyVersion = 4;

/// Reads one entry of a stored history.
bool isOfSentForm(QDataStream& entry)
{
    QUrl url;
    QString title;
    QByteArray state;
    qint32 transition = 0;
    bool isSent = false;
    entry >> url >> title >> state >> transition >> isSent;
    QUrl referrer;
    qint32 referrerPolicy = 0;
    QUrl firstAddress;
    bool hasOwnAgent = false;
    qint64 time = 0;
    int status = 0;
    QUrl icon;
    entry >> referrer >> referrerPolicy >> firstAddress >> hasOwnAgent >> time >> status >> icon;
    return isSent;
}

} // namespace

WebEnginePage::WebEnginePage(QWebEngineProfile& profile, const FrameReports& reports,
                             QObject* parent)
    : QWebEnginePage(&profile, parent), m_reports(reports), m_sentForms(new SentForms(this))
{
    setUrlRequestInterceptor(m_sentForms);
    connect(m_sentForms, &SentForms::documentWanted, this, &WebEnginePage::documentWanted);
}

WebEnginePage::Keeper::Keeper(WebEnginePage& page, While what)
    : m_page(&page), m_questions(what == While::Asking ? 1 : 0)
{
    ++m_page->m_keepers;
    m_page->m_questions += m_questions;
    emit m_page->kept();
}

WebEnginePage::Keeper::~Keeper()
{
    if (!m_page)
        return;
    m_page->m_questions -= m_questions;
    if (--m_page->m_keepers == 0 && m_page->m_isRetired)
        m_page->deleteLater();
}

void WebEnginePage::retire()
{
    m_isRetired = true;
    if (m_keepers == 0)
        deleteLater();
}

void WebEnginePage::reload(WebAction action)
{
    emit userNavigates();
    if (isFromSentForm())
        emit resendingWanted(action);
    else
        triggerAction(action);
}

// Only the stored history tells it (Qt 6.4). `acceptNavigationRequest` learns
// that a form was submitted, but not whether by POST, nor which page is shown in the end after
// redirects and changes of the address by the page's scripts. To be replaced when
// QWebEngineHistoryItem tells it.
bool WebEnginePage::isFromSentForm() const
{
    QByteArray stored;
    QDataStream writer(&stored, QIODevice::WriteOnly);
    writer << *history();
    QDataStream reader(stored);
    int version = 0;
    int count = 0;
    int current = 0;
    reader >> version >> count >> current;
    bool isSent = false;
    for (int i = 0; version == historyVersion && i <= current; ++i)
        isSent = isOfSentForm(reader);
    return isSent && reader.status() == QDataStream::Ok;
}

bool WebEnginePage::hasSentFormTo(const QUrl& address) const
{
    return m_sentForms->isFrom(address);
}

bool WebEnginePage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame)
{
    if (isForDesktop(url)) {
        if (type == NavigationTypeLinkClicked)
            emit desktopAddressWanted(url, false);
        return false;
    }
    // The page of the program about what is no address, loaded for the first time or again.
    const bool isOurs = WebErrorPage::isAt(url) && type != NavigationTypeLinkClicked &&
                        type != NavigationTypeOther && type != NavigationTypeRedirect;
    if (isForNobody(url) && !isOurs) {
        emit navigationBarred(url);
        return false;
    }
    emit navigationStarting(url, isMainFrame);
    return true;
}

void WebEnginePage::javaScriptAlert(const QUrl& site, const QString& text)
{
    Prompt::Answer answer;
    emit scriptAsks(site, {.text = text}, answer);
}

bool WebEnginePage::javaScriptConfirm(const QUrl& site, const QString& text)
{
    if (text == leaveQuestion())
        return askToLeave();
    Prompt::Answer answer;
    emit scriptAsks(site, {.text = text, .refuse = u"Abbrechen"_s}, answer);
    return answer.isAccepted;
}

bool WebEnginePage::javaScriptPrompt(const QUrl& site, const QString& text, const QString& preset,
                                     QString* result)
{
    Prompt::Answer answer;
    emit scriptAsks(site, {.text = text, .refuse = u"Abbrechen"_s, .input = preset}, answer);
    *result = answer.isAccepted ? answer.input : QString();
    return answer.isAccepted;
}

bool WebEnginePage::askToLeave()
{
    const Keeper keeper(*this, Keeper::While::Asking);
    emit leaveAsked();
    bool isLeaving = true;
    emit scriptAsksToStay(isLeaving);
    emit leaveAnswered(isLeaving);
    return isLeaving;
}

void WebEnginePage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel /*level*/,
                                             const QString& message, int /*lineNumber*/,
                                             const QString& /*sourceId*/)
{
    // Everything else is dropped: a page could fill the program's own output with it. A page
    // that forges the engine's line about a file gets a status text, and no more.
    if (const std::optional<FrameReport> report = m_reports.read(message))
        emit frameReported(*report);
    else if (message.startsWith("Not allowed to load local resource:"_L1)) // Qt 6.4 and 6.8
        emit fileBarred();
}
