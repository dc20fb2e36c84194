#include "engine/downloads/WebDownloads.h"

#include "base/Prompt.h"
#include "base/RunCommand.h"
#include "engine/downloads/CancelledDownload.h"
#include "engine/downloads/DownloadFailures.h"
#include "pages/asking/PromptSession.h"
#include "pages/downloads/FileNames.h"
#include "pages/downloads/MovingFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTimer>
#include <QWebEngineDownloadRequest>
#include <QWebEngineHistory>
#include <QWebEngineProfile>

#include <algorithm>
#include <chrono>
#include <functional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Downloads that may wait for their place at a time: each takes room on the disk.
constexpr int mostWaiting = 20;
/// How many bytes of one may come before the user has agreed to it.
constexpr qint64 mostBytesUnasked = 50'000'000;
/// How long the engine may take for its next request, before a page of our own asks.
constexpr std::chrono::seconds untilRetry(15);

/// The page whose document offers what `page` is about to load; null if it has none.
WebEnginePage* sourceOf(WebEnginePage* page)
{
    return page != nullptr && page->history()->count() > 0 ? page : nullptr;
}

} // namespace

WebDownloads::WebDownloads(Shell& shell, QWidget* owner, QWebEngineProfile& profile,
                           PromptSession& session, DownloadTable& table, const QString& spareFolder)
    : m_shell(shell), m_owner(owner), m_profile(profile), m_session(session), m_table(table),
      m_place(shell, owner, table, spareFolder)
{
    connect(&profile, &QWebEngineProfile::downloadRequested, this, &WebDownloads::requested);
}

WebDownloads::~WebDownloads() // the engine leaves its files then (seen with Qt 6.4)
{
    const QList<Id> ids = m_transfers.keys();
    for (const Id id : ids) {
        release(id);
        removeFiles(m_transfers[id]);
    }
}

void WebDownloads::requested(QWebEngineDownloadRequest* download)
{
    if (takeOverRetry(*download) || takeOverLoader(*download))
        return;
    if (download->state() == QWebEngineDownloadRequest::DownloadInProgress) {
        // A page is being saved, and the user has been asked where to.
        const QString path =
            QDir(download->downloadDirectory()).filePath(download->downloadFileName());
        begin(*download, {.waitingPath = path, .target = path}, DownloadState::Running);
        emit accepted();
        return;
    }
    const QPointer<WebEnginePage> page = qobject_cast<WebEnginePage*>(download->page());
    if (m_place.refusesAll(sourceOf(page)) || waitingCount() >= mostWaiting) {
        m_place.reportRefusal();
        download->cancel();
    } else {
        receive(*download, page);
    }
    if (page)
        emit page->downloadDecided();
}

/// When a connection breaks the engine tries again by itself, with a new request for the same
/// download (seen with Qt 6.4); so it does when one is continued. True if `download` is such a
/// request.
bool WebDownloads::takeOverRetry(QWebEngineDownloadRequest& download)
{
    const auto transfer =
        std::find_if(m_transfers.begin(), m_transfers.end(), [&](const Transfer& candidate) {
            return candidate.request && candidate.number == download.id();
        });
    if (transfer == m_transfers.end())
        return false;
    const Id id = transfer.key();
    if (transfer->isFromForm) {
        // The engine has asked without sending the form (seen with Qt 6.4), and would save
        // whatever has come then.
        download.cancel();
        fail(id, failureText(QWebEngineDownloadRequest::NetworkFailed));
        return true;
    }
    if (transfer->request != &download) {
        transfer->request->disconnect(this);
        // If the old request were deleted now, it would cancel the download that both stand for.
        transfer->request->setParent(&download);
    }
    take(id, download);
    return true;
}

/// True if `download` is what a page was made for that asks for a file once more.
bool WebDownloads::takeOverLoader(QWebEngineDownloadRequest& download)
{
    const auto transfer =
        std::find_if(m_transfers.begin(), m_transfers.end(), [&](const Transfer& candidate) {
            return candidate.loader && candidate.loader.get() == download.page();
        });
    if (transfer == m_transfers.end())
        return false;
    const Download* const row = m_table.find(transfer.key());
    if (row != nullptr && isOpen(*row)) {
        transfer->number = download.id();
        take(transfer.key(), download);
    } else {
        download.cancel(); // as the user wanted before it came
        release(transfer.key());
    }
    return true;
}

/// Has the engine write what comes now where the file waits.
void WebDownloads::take(Id id, QWebEngineDownloadRequest& download)
{
    Transfer& transfer = m_transfers[id];
    transfer.request = &download;
    transfer.page = download.page();
    const QFileInfo file(transfer.waitingPath);
    download.setDownloadDirectory(file.absolutePath());
    download.setDownloadFileName(file.fileName());
    download.accept();
    follow(id, download);
}

QString WebDownloads::freeWaitingPath(const QString& name) const
{
    // The engine may not have made the files of the other downloads yet.
    return m_place.waitingPlace(name, [this](const QString& path) {
        return std::any_of(m_transfers.begin(), m_transfers.end(),
                           [&](const Transfer& transfer) { return transfer.waitingPath == path; });
    });
}

void WebDownloads::receive(QWebEngineDownloadRequest& download, WebEnginePage* page)
{
    const QString name = safeFileName(download.suggestedFileName());
    const QFileInfo file(freeWaitingPath(name));
    download.setDownloadDirectory(file.absolutePath());
    download.setDownloadFileName(file.fileName());
    Transfer transfer{.name = name,
                      .waitingPath = file.filePath(),
                      .isFromForm = page != nullptr && page->hasSentFormTo(download.url()),
                      .source = sourceOf(page)};
    if (page != nullptr && transfer.source == nullptr)
        transfer.keeper = std::make_shared<WebEnginePage::Keeper>(*page);
    download.accept();
    const Id id = begin(download, transfer, DownloadState::Asking);
    askInTurn(id, [this, id] { askPlace(id); });
}

WebDownloads::Id WebDownloads::begin(QWebEngineDownloadRequest& download, const Transfer& transfer,
                                     DownloadState state)
{
    const auto id = std::make_shared<Id>();
    const DownloadActions actions{.cancel = [this, id] { cancel(*id); },
                                  .pause = [this, id] { pause(*id); },
                                  .goOn = [this, id] { goOn(*id); },
                                  .reload = [this, id] { reload(*id); },
                                  .forget = [this, id] { forget(*id); }};
    const bool isSavedPage = transfer.target == transfer.waitingPath;
    const bool isOfPage = download.url().scheme() == "blob"_L1;
    *id = m_table.add({.path = transfer.target.isEmpty() ? transfer.name : transfer.target,
                       .state = state,
                       .total = download.totalBytes(),
                       .canReload = !isSavedPage && !isOfPage && !transfer.isFromForm},
                      actions);
    Transfer& begun = m_transfers[*id];
    begun = transfer;
    begun.request = &download;
    begun.page = download.page();
    begun.number = download.id();
    begun.address = download.url();
    // A break is seen in the first request only: the engine tells of no reason that it has told
    // already.
    connect(&download, &QWebEngineDownloadRequest::interruptReasonChanged, this,
            [this, id = *id, &download] { awaitRetry(id, &download); });
    follow(*id, download);
    return *id;
}

void WebDownloads::follow(Id id, QWebEngineDownloadRequest& download)
{
    const auto report = [this, id, &download] { reportProgress(id, download); };
    const auto check = [this, id, &download] { checkEnd(id, download); };
    connect(&download, &QWebEngineDownloadRequest::receivedBytesChanged, this, report);
    connect(&download, &QWebEngineDownloadRequest::totalBytesChanged, this, report);
    connect(&download, &QWebEngineDownloadRequest::stateChanged, this, check);
    connect(&download, &QWebEngineDownloadRequest::isFinishedChanged, this, check);
    m_table.setCanPause(id, !download.isSavePageDownload());
    checkEnd(id, download); // a small file may be complete already
}

void WebDownloads::reportProgress(Id id, QWebEngineDownloadRequest& download)
{
    m_table.setProgress(id, download.receivedBytes(), download.totalBytes());
    const bool isTooMuch = isWaiting(id) && download.receivedBytes() > mostBytesUnasked;
    if (isTooMuch && !download.isPaused())
        QTimer::singleShot(0, &download, &QWebEngineDownloadRequest::pause);
}

bool WebDownloads::isWaiting(Id id) const
{
    const Download* const row = m_table.find(id);
    return row != nullptr && row->state == DownloadState::Asking;
}

int WebDownloads::waitingCount() const
{
    const QList<Id> ids = m_transfers.keys();
    return static_cast<int>(
        std::count_if(ids.begin(), ids.end(), [this](Id id) { return isWaiting(id); }));
}

void WebDownloads::askInTurn(Id id, const std::function<void()>& ask)
{
    if (!std::exchange(m_transfers[id].isAsked, true))
        m_session.askInTurn(this, ask);
}

void WebDownloads::askPlace(Id id)
{
    if (!m_transfers.contains(id))
        return;
    const Transfer asked = m_transfers.value(id);
    if (!isWaiting(id)) { // failed or cancelled before it was its turn
        m_transfers[id].isAsked = false;
        return;
    }
    const PromptSession::Hold hold(m_session);
    const DropsDisabled guard(m_shell);
    const QString path = m_place.ask(asked.name, asked.source.data());
    const auto transfer = m_transfers.find(id);
    if (transfer != m_transfers.end())
        transfer->isAsked = false;
    if (path.isEmpty()) {
        refuse(id);
        return;
    }
    // It may have failed or been cancelled while the question was open, and gone, too.
    if (transfer != m_transfers.end()) {
        const bool isRunning = isWaiting(id);
        transfer->target = path;
        transfer->mayReplace = QFileInfo::exists(path) || QFileInfo(path).isSymLink();
        m_table.setPlace(id, path);
        if (isRunning && transfer->request)
            transfer->request->resume();
        else if (isRunning && !transfer->loader)
            moveToTarget(id);
    }
    emit accepted();
}

void WebDownloads::askPlaceAgain(Id id, const QString& problem)
{
    {
        const PromptSession::Hold hold(m_session);
        const DropsDisabled guard(m_shell);
        m_shell.prompt().tell(m_owner, problem, u"Meldung"_s, Prompt::Icon::Exclamation);
    }
    askPlace(id);
}

void WebDownloads::refuse(Id id)
{
    m_table.remove(id);
    forget(id);
}

void WebDownloads::checkEnd(Id id, QWebEngineDownloadRequest& download)
{
    // An interrupted download may be resumed, and counts as finished only if it cannot.
    const bool isInterrupted = download.state() == QWebEngineDownloadRequest::DownloadInterrupted;
    const auto transfer = m_transfers.find(id);
    if (transfer == m_transfers.end() || (!download.isFinished() && !isInterrupted))
        return;
    m_table.setProgress(id, download.receivedBytes(), download.totalBytes());
    download.disconnect(this);
    if (isInterrupted) {
        fail(id, failureText(download.interruptReason()));
        return;
    }
    download.deleteLater(); // the profile would keep it until the program ends
    transfer->request = nullptr;
    transfer->loader.reset();
    if (download.state() == QWebEngineDownloadRequest::DownloadCompleted) {
        m_table.setCanPause(id, false);
        if (!transfer->target.isEmpty())
            moveToTarget(id);
        return;
    }
    m_table.finish(id, DownloadState::Cancelled, failureText(download.interruptReason()));
    release(id);
}

/// What has come of the file is kept if the user may have it continued.
void WebDownloads::fail(Id id, const QString& failure)
{
    const Transfer transfer = m_transfers.value(id);
    m_table.finish(id, DownloadState::Failed,
                   transfer.isFromForm
                       ? failure + u" Das Formular wird nicht noch einmal gesendet."_s
                       : failure);
    const Download* const row = m_table.find(id);
    if (row == nullptr || !row->canReload)
        release(id);
}

void WebDownloads::moveToTarget(Id id)
{
    Transfer& transfer = m_transfers[id];
    if (transfer.target == transfer.waitingPath) {
        moved(id, FileMove::Done);
        return;
    }
    const auto move =
        std::make_shared<MovingFile>(transfer.waitingPath, transfer.target, transfer.mayReplace);
    transfer.move = move;
    connect(move.get(), &MovingFile::ended, this,
            [this, id](FileMove result) { moved(id, result); });
    move->start();
}

void WebDownloads::moved(Id id, FileMove result)
{
    const auto transfer = m_transfers.find(id);
    // It is still telling its end.
    QTimer::singleShot(0, this, [move = std::exchange(transfer->move, {})] {});
    switch (result) {
    case FileMove::Done:
        m_table.finish(id, DownloadState::Completed);
        m_transfers.erase(transfer);
        return;
    case FileMove::Cancelled:
        m_table.finish(id, DownloadState::Cancelled);
        release(id);
        return;
    case FileMove::TargetExists: // somebody has made it since the user was asked
        transfer->target = m_place.freeBeside(transfer->target);
        m_table.setPlace(id, transfer->target);
        moveToTarget(id);
        return;
    default:
        break;
    }
    const QString problem = u"Die Datei „%1“ konnte nicht gespeichert werden: %2"_s.arg(
        QDir::toNativeSeparators(transfer->target), failureText(result));
    transfer->target.clear();
    m_table.setPlace(id, std::nullopt);
    askInTurn(id, [this, id, problem] { askPlaceAgain(id, problem); });
}

void WebDownloads::pause(Id id)
{
    if (const Transfer transfer = m_transfers.value(id); transfer.request) {
        transfer.request->pause();
        m_table.setPaused(id, true);
    }
}

void WebDownloads::goOn(Id id)
{
    m_table.setPaused(id, false);
    if (const Transfer transfer = m_transfers.value(id); transfer.request)
        transfer.request->resume();
}

void WebDownloads::cancel(Id id)
{
    const Transfer transfer = m_transfers.value(id);
    if (transfer.request) {
        transfer.request->cancel();
    } else if (transfer.move) {
        transfer.move->cancel();
    } else {
        m_table.finish(id, DownloadState::Cancelled);
        if (!transfer.loader) // what it has asked for may still come
            release(id);
    }
}

void WebDownloads::reload(Id id)
{
    const auto transfer = m_transfers.find(id);
    if (transfer == m_transfers.end())
        return;
    // Another download may be on its way to the same file by now.
    if (m_table.isTarget(transfer->target)) {
        transfer->target = m_place.freeBeside(transfer->target);
        transfer->mayReplace = false;
        m_table.setPlace(id, transfer->target);
    }
    const QPointer<QWebEngineDownloadRequest> request = transfer->request;
    const bool canResume = request && !request->isFinished() && transfer->page &&
                           request->state() == QWebEngineDownloadRequest::DownloadInterrupted;
    if (!canResume) {
        loadAnew(id);
        return;
    }
    const bool isAsking = transfer->target.isEmpty();
    request->resume();
    m_table.restart(id, isAsking ? DownloadState::Asking : DownloadState::Running,
                    request->receivedBytes() > 0 ? DownloadStart::Continued : DownloadStart::Anew);
    follow(id, *request); // until the engine makes the next one
    awaitRetry(id, request);
    if (isAsking)
        askInTurn(id, [this, id] { askPlace(id); });
}

void WebDownloads::loadAnew(Id id)
{
    release(id);
    const auto transfer = m_transfers.find(id);
    const bool isAsking = transfer->target.isEmpty();
    // Another one than before, as the engine still removes what it was writing there.
    transfer->waitingPath = freeWaitingPath(transfer->name);
    m_table.restart(id, isAsking ? DownloadState::Asking : DownloadState::Running,
                    DownloadStart::Anew);
    if (isAsking)
        askInTurn(id, [this, id] { askPlace(id); });
    // It may be dropped within a signal of the engine.
    transfer->loader = {new QWebEnginePage(&m_profile, this), std::mem_fn(&QObject::deleteLater)};
    transfer->loader->download(transfer->address, transfer->name);
}

void WebDownloads::awaitRetry(Id id, const QWebEngineDownloadRequest* former)
{
    // When the page that asked for the file shows another document, the engine does ask the
    // server once more, but then does nothing with the answer, for ever (seen with Qt 6.4).
    const bool isPageThere = !m_transfers.value(id).page.isNull();
    QTimer::singleShot(isPageThere ? untilRetry : std::chrono::seconds(0), this,
                       [this, id, former] {
                           const auto transfer = m_transfers.find(id);
                           const Download* const row = m_table.find(id);
                           if (transfer == m_transfers.end() || row == nullptr ||
                               transfer->request.data() != former ||
                               former->state() != QWebEngineDownloadRequest::DownloadInProgress)
                               return;
                           if (row->canReload)
                               loadAnew(id);
                           else
                               fail(id, failureText(former->interruptReason()));
                       });
}

/// Lets go of the engine's request, and removes from the disk what has come of the file.
void WebDownloads::release(Id id)
{
    Transfer& transfer = m_transfers[id];
    const bool isBegun = transfer.request &&
                         transfer.request->state() == QWebEngineDownloadRequest::DownloadInProgress;
    if (transfer.request) {
        transfer.request->disconnect(this);
        if (isBegun)
            cancelAndDelete(*transfer.request);
        else
            transfer.request->deleteLater(); // which cancels it
        transfer.request = nullptr;
    }
    transfer.keeper.reset();
    transfer.loader.reset();
    transfer.move.reset();
    // The engine may be renaming what it writes, and would leave an empty file if this one took
    // the partial one away (seen with Qt 6.8).
    if (!isBegun)
        removeFiles(transfer);
}

void WebDownloads::removeFiles(const Transfer& transfer)
{
    QFile::remove(partialFile(transfer.waitingPath));
    if (transfer.waitingPath != transfer.target)
        QFile::remove(transfer.waitingPath);
}

void WebDownloads::forget(Id id)
{
    if (!m_transfers.contains(id))
        return;
    release(id);
    m_transfers.remove(id);
}
