#include "engine/downloads/WebDownloads.h"

#include "base/Prompt.h"
#include "base/RunCommand.h"
#include "engine/downloads/DownloadFailures.h"
#include "pages/asking/PromptSession.h"
#include "pages/downloads/FileMove.h"
#include "pages/downloads/FileNames.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <QTimer>
#include <QWebEngineDownloadRequest>
#include <QWebEngineHistory>
#include <QWebEngineProfile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Downloads that may wait for their place at a time: each takes room on the disk.
constexpr int mostWaiting = 20;
/// How many bytes of one may come before the user has agreed to it.
constexpr qint64 mostBytesUnasked = 50'000'000;

/// The page whose document offers what `page` is about to load; null if it has none.
WebEnginePage* sourceOf(WebEnginePage* page)
{
    return page != nullptr && page->history()->count() > 0 ? page : nullptr;
}

} // namespace

/// A file on its way to another file system.
struct WebDownloads::Copy {
    std::atomic_bool isCancelled = false;
    FileMove result = FileMove::Failed;
    QPointer<QThread> thread;
};

WebDownloads::WebDownloads(Shell& shell, QWidget* owner, QWebEngineProfile& profile,
                           PromptSession& session, DownloadTable& table, const QString& spareFolder)
    : m_shell(shell), m_owner(owner), m_session(session), m_table(table),
      m_place(shell, owner, table, spareFolder)
{
    connect(&profile, &QWebEngineProfile::downloadRequested, this, &WebDownloads::requested);
}

WebDownloads::~WebDownloads()
{
    const QList<quint32> ids = m_transfers.keys();
    for (const quint32 id : ids)
        discard(id);
}

void WebDownloads::requested(QWebEngineDownloadRequest* download)
{
    if (takeOverRetry(*download))
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
    WebEnginePage* const source = sourceOf(page);
    if (m_place.refusesAll(source) || waitingCount() >= mostWaiting) {
        m_place.reportRefusal();
        download->cancel();
    } else {
        receive(*download, source);
    }
    if (page)
        emit page->downloadDecided();
}

/// When a connection breaks the engine tries again by itself, with a new request for the same
/// download (seen with Qt 6.4). True if `download` is such a request.
bool WebDownloads::takeOverRetry(QWebEngineDownloadRequest& download)
{
    const auto transfer = m_transfers.find(download.id());
    if (transfer == m_transfers.end())
        return false;
    if (transfer->request && transfer->request != &download) {
        transfer->request->disconnect(this);
        // If the old request were deleted now, it would cancel the download that both stand for.
        transfer->request->setParent(&download);
    }
    transfer->request = &download;
    const QFileInfo file(transfer->waitingPath);
    download.setDownloadDirectory(file.absolutePath());
    download.setDownloadFileName(file.fileName());
    download.accept();
    follow(download);
    return true;
}

void WebDownloads::receive(QWebEngineDownloadRequest& download, WebEnginePage* source)
{
    const QString name = safeFileName(download.suggestedFileName());
    // The engine may not have made the files of the other downloads yet.
    const auto isTaken = [this](const QString& path) {
        return std::any_of(m_transfers.begin(), m_transfers.end(),
                           [&](const Transfer& transfer) { return transfer.waitingPath == path; });
    };
    const QFileInfo file(m_place.waitingPlace(name, isTaken));
    download.setDownloadDirectory(file.absolutePath());
    download.setDownloadFileName(file.fileName());
    download.accept();
    begin(download, {.name = name, .waitingPath = file.filePath(), .source = source},
          DownloadState::Asking);
    m_session.askInTurn(this, [this, id = download.id()] { askPlace(id); });
}

void WebDownloads::begin(QWebEngineDownloadRequest& download, Transfer transfer,
                         DownloadState state)
{
    const quint32 id = download.id();
    const QString shown = transfer.target.isEmpty() ? transfer.name : transfer.target;
    transfer.entry = m_table.add({.path = shown, .state = state, .total = download.totalBytes()},
                                 [this, id] { cancel(id); });
    transfer.request = &download;
    m_transfers.insert(id, transfer);
    follow(download);
}

void WebDownloads::follow(QWebEngineDownloadRequest& download)
{
    const auto report = [this, &download] { reportProgress(download); };
    const auto check = [this, &download] { checkEnd(download); };
    connect(&download, &QWebEngineDownloadRequest::receivedBytesChanged, this, report);
    connect(&download, &QWebEngineDownloadRequest::totalBytesChanged, this, report);
    connect(&download, &QWebEngineDownloadRequest::stateChanged, this, check);
    connect(&download, &QWebEngineDownloadRequest::isFinishedChanged, this, check);
    checkEnd(download); // a small file may be complete already
}

void WebDownloads::reportProgress(QWebEngineDownloadRequest& download)
{
    const Transfer transfer = m_transfers.value(download.id());
    m_table.setProgress(transfer.entry, download.receivedBytes(), download.totalBytes());
    const bool isTooMuch = transfer.target.isEmpty() && download.receivedBytes() > mostBytesUnasked;
    if (isTooMuch && !download.isPaused())
        QTimer::singleShot(0, &download, &QWebEngineDownloadRequest::pause);
}

int WebDownloads::waitingCount() const
{
    return static_cast<int>(
        std::count_if(m_transfers.begin(), m_transfers.end(),
                      [](const Transfer& transfer) { return transfer.target.isEmpty(); }));
}

void WebDownloads::askPlace(quint32 id)
{
    const Transfer asked = m_transfers.value(id);
    if (asked.entry == 0) // cancelled before it was its turn
        return;
    const PromptSession::Hold hold(m_session);
    const DropsDisabled guard(m_shell);
    const QString path = m_place.ask(asked.name, asked.source.data());
    if (path.isEmpty()) {
        refuse(id);
        return;
    }
    // It may have failed or been cancelled while the question was open.
    const auto transfer = m_transfers.find(id);
    if (transfer != m_transfers.end()) {
        transfer->target = path;
        transfer->mayReplace = QFileInfo::exists(path) || QFileInfo(path).isSymLink();
        m_table.setPlace(transfer->entry, path);
        if (transfer->request)
            transfer->request->resume();
        else
            moveToTarget(id);
    }
    emit accepted();
}

void WebDownloads::askPlaceAgain(quint32 id, const QString& problem)
{
    {
        const PromptSession::Hold hold(m_session);
        const DropsDisabled guard(m_shell);
        m_shell.prompt().tell(m_owner, problem, u"Meldung"_s, Prompt::Icon::Exclamation);
    }
    askPlace(id);
}

void WebDownloads::refuse(quint32 id)
{
    const auto transfer = m_transfers.find(id);
    if (transfer == m_transfers.end())
        return;
    transfer->isRefused = true;
    m_table.remove(transfer->entry);
    cancel(id);
}

void WebDownloads::checkEnd(QWebEngineDownloadRequest& download)
{
    // An interrupted download could be resumed and does not count as finished, but nobody
    // resumes it here.
    const bool isInterrupted = download.state() == QWebEngineDownloadRequest::DownloadInterrupted;
    const quint32 id = download.id();
    const auto transfer = m_transfers.find(id);
    if (transfer == m_transfers.end() || (!download.isFinished() && !isInterrupted))
        return;
    m_table.setProgress(transfer->entry, download.receivedBytes(), download.totalBytes());
    download.disconnect(this);
    download.deleteLater(); // the profile would keep it until the program ends
    transfer->request = nullptr;
    if (download.state() == QWebEngineDownloadRequest::DownloadCompleted && !transfer->isRefused) {
        if (!transfer->target.isEmpty())
            moveToTarget(id);
        return;
    }
    m_table.finish(transfer->entry,
                   isInterrupted ? DownloadState::Failed : DownloadState::Cancelled,
                   failureText(download.interruptReason()));
    discard(id);
}

void WebDownloads::moveToTarget(quint32 id)
{
    const Transfer transfer = m_transfers.value(id);
    if (transfer.target == transfer.waitingPath) {
        moved(id, FileMove::Done);
        return;
    }
    const FileMove result = renameFile(transfer.waitingPath, transfer.target, transfer.mayReplace);
    if (result == FileMove::OtherFileSystem)
        copyToTarget(id);
    else
        moved(id, result);
}

void WebDownloads::copyToTarget(quint32 id)
{
    Transfer& transfer = m_transfers[id];
    const auto copy = std::make_shared<Copy>();
    transfer.copy = copy;
    const QString partial = partialFile(transfer.target);
    copy->thread = QThread::create([copy, from = transfer.waitingPath, partial] {
        copy->result = copyFile(from, partial, copy->isCancelled);
    });
    connect(copy->thread, &QThread::finished, copy->thread, &QObject::deleteLater);
    connect(copy->thread, &QThread::finished, this,
            [this, id, partial, copy] { copied(id, partial, copy->result); });
    copy->thread->start();
}

void WebDownloads::copied(quint32 id, const QString& partial, FileMove result)
{
    const Transfer transfer = m_transfers.value(id);
    if (result == FileMove::Done) {
        result = renameFile(partial, transfer.target, transfer.mayReplace);
        QFile::remove(result == FileMove::Done ? transfer.waitingPath : partial);
    }
    moved(id, result);
}

void WebDownloads::moved(quint32 id, FileMove result)
{
    const auto transfer = m_transfers.find(id);
    transfer->copy.reset();
    switch (result) {
    case FileMove::Done:
        m_table.finish(transfer->entry, DownloadState::Completed);
        m_transfers.erase(transfer);
        return;
    case FileMove::Cancelled:
        m_table.finish(transfer->entry, DownloadState::Cancelled);
        discard(id);
        return;
    case FileMove::TargetExists: // somebody has made it since the user was asked
        transfer->target = m_place.freeBeside(transfer->target);
        m_table.setPlace(transfer->entry, transfer->target);
        moveToTarget(id);
        return;
    default:
        break;
    }
    const QString problem = u"Die Datei „%1“ konnte nicht gespeichert werden: %2"_s.arg(
        QDir::toNativeSeparators(transfer->target), failureText(result));
    transfer->target.clear();
    m_table.setPlace(transfer->entry, std::nullopt);
    m_session.askInTurn(this, [this, id, problem] { askPlaceAgain(id, problem); });
}

void WebDownloads::cancel(quint32 id)
{
    const Transfer transfer = m_transfers.value(id);
    if (transfer.request) {
        transfer.request->cancel();
    } else if (transfer.copy) {
        transfer.copy->isCancelled = true;
    } else {
        m_table.finish(transfer.entry, DownloadState::Cancelled);
        discard(id);
    }
}

/// Forgets the transfer, and removes from the disk what has come of the file.
void WebDownloads::discard(quint32 id)
{
    const Transfer transfer = m_transfers.take(id);
    if (transfer.copy && transfer.copy->thread) {
        transfer.copy->isCancelled = true;
        transfer.copy->thread->wait();
        QFile::remove(partialFile(transfer.target));
    }
    // The engine removes its partial file, too, but not when the program ends (seen with Qt 6.4).
    QFile::remove(partialFile(transfer.waitingPath));
    if (transfer.waitingPath != transfer.target)
        QFile::remove(transfer.waitingPath);
}
