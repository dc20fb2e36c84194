#include "engine/viewing/HangWatch.h"

#include "engine/page/WebEnginePage.h"
#include "pages/asking/PageInput.h"
#include "pages/viewing/EndProcess.h"
#include "pages/viewing/HangNotice.h"

#include <QApplication>
#include <QWebEngineHistory>
#include <QWebEngineScript>
#include <QWebEngineView>

using namespace Qt::StringLiterals;

namespace {

/// How long after its reason a question is asked: what the user does begins to work first, and
/// ten keys make one question.
constexpr std::chrono::milliseconds beforeAsking(500);
/// How long the page may take for an answer. It is asked twice, as the engine never answers
/// when the document that was asked has gone meanwhile (seen with Qt 6.4).
constexpr std::chrono::milliseconds patience(3000);
constexpr std::chrono::milliseconds morePatience(1500);
/// How long the notice stays away when the user wants to wait.
constexpr std::chrono::seconds waitingTime(15);

} // namespace

HangWatch::HangWatch(WebEnginePage* page, QWebEngineView* view, const PageInput& input)
    : QObject(page), m_page(page), m_view(view)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &HangWatch::goOn);
    connect(&input, &PageInput::pressed, this, &HangWatch::lookAfter);
    connect(&input, &PageInput::used, this, &HangWatch::lookAfter);
    connect(&input, &PageInput::turnedTo, this, [this] {
        lookAfter();
        if (m_notice)
            QTimer::singleShot(0, m_notice, &HangNotice::takeFocus);
    });
    connectPage();
}

void HangWatch::connectPage()
{
    connect(m_page, &QWebEnginePage::loadStarted, this, &HangWatch::lookAfter);
    connect(m_page, &WebEnginePage::userNavigates, this, &HangWatch::lookAfter);
    connect(m_page, &WebEnginePage::userLeaves, this, &HangWatch::endIfLeft);
    connect(m_page, &WebEnginePage::frameReported, this, [this](const FrameReport& report) {
        if (report.isMainFrame)
            calm();
    });
    connect(m_page, &QWebEnginePage::renderProcessPidChanged, this, &HangWatch::calm);
    connect(m_page, &QWebEnginePage::renderProcessTerminated, this, &HangWatch::calm);
    connect(m_page, &QWebEnginePage::lifecycleStateChanged, this, &HangWatch::calm);
}

void HangWatch::lookAfter()
{
    if (m_state != State::Calm)
        return;
    m_state = State::Waiting;
    m_timer.start(beforeAsking);
}

void HangWatch::goOn()
{
    if (!canAnswer())
        calm();
    else if (m_state == State::Waiting)
        ask(State::Asked, patience);
    else if (m_state == State::Asked)
        ask(State::AskedAgain, morePatience);
    else if (m_state == State::AskedAgain)
        find();
    else
        showNotice();
}

bool HangWatch::canAnswer() const
{
    const bool isAlive = !m_page->isRetired() && m_page->renderProcessPid() > 0 &&
                         m_page->history()->count() > 0 &&
                         m_page->lifecycleState() == QWebEnginePage::LifecycleState::Active;
    // While a question is open the scripts of its page stand still, and the engine with them;
    // a page that is printed or has stopped at a breakpoint has a reason for its silence, too.
    const bool isBusyOtherwise = m_page->isKept() || m_page->devToolsPage() != nullptr ||
                                 QApplication::activeModalWidget() != nullptr;
    return isAlive && !isBusyOtherwise;
}

void HangWatch::ask(State next, std::chrono::milliseconds time)
{
    m_state = next;
    m_timer.start(time);
    const auto answered = [self = QPointer(this), round = m_round](const QVariant&) {
        if (self && round == self->m_round)
            self->calm();
    };
    m_page->runJavaScript(u"0"_s, QWebEngineScript::ApplicationWorld, answered);
}

void HangWatch::calm()
{
    ++m_round;
    m_timer.stop();
    m_state = State::Calm;
    if (m_notice && !m_notice->isHidden())
        m_notice->vanish();
}

void HangWatch::find()
{
    m_state = State::Hanging;
    emit found();
    showNotice();
    for (const WebEnginePage* const partner : partners())
        if (auto* const watch = partner->findChild<HangWatch*>())
            watch->lookAfter();
}

void HangWatch::showNotice()
{
    if (!m_view)
        return;
    if (!m_notice) {
        m_notice = new HangNotice(m_view);
        connect(m_notice, &HangNotice::waitWanted, this, &HangWatch::wait);
        connect(m_notice, &HangNotice::endWanted, this, &HangWatch::end);
    }
    QStringList titles;
    for (const WebEnginePage* const partner : partners())
        titles << partner->title();
    m_notice->appear(titles);
}

void HangWatch::wait()
{
    m_notice->vanish();
    m_timer.start(waitingTime);
}

void HangWatch::end()
{
    const QList<WebEnginePage*> ended = partners() << m_page;
    if (!endDescendant(m_page->renderProcessPid())) {
        m_notice->showFailure();
        return;
    }
    for (WebEnginePage* const page : ended)
        emit page->endedByUser();
}

void HangWatch::endIfLeft()
{
    // Of the same site no page comes while the one before does not answer (seen with Qt 6.4).
    // Where other windows would lose their pages, the user decides by the notice.
    if (m_state == State::Hanging && partners().isEmpty())
        end();
}

QList<WebEnginePage*> HangWatch::partners() const
{
    QList<WebEnginePage*> all;
    const qint64 process = m_page->renderProcessPid();
    // All pages of the program have one parent.
    const auto pages = m_page->parent()->findChildren<WebEnginePage*>(Qt::FindDirectChildrenOnly);
    for (WebEnginePage* const page : pages)
        if (page != m_page && !page->isRetired() && page->renderProcessPid() == process)
            all << page;
    return all;
}
