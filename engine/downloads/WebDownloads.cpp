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
constexpr qint64 mostAhead = 50'000'000;

/// Who offers what `page` is about to load, if it has a document to do so with.
WebEnginePage* sourceOf(WebEnginePage* page)
{
    return page != nullptr && page->history()->count() > 0 ? page : nullptr;
}

QString failureText(FileMove move)
{
    using Reason = QWebEngineDownloadRequest::DownloadInterruptReason;
    switch (move) {
    case FileMove::NoSpace:
        return failureText(Reason::FileNoSpace);
    case FileMove::Denied:
        return failureText(Reason::FileAccessDenied);
    default:
        return failureText(Reason::FileFailed);
    }
}

} // namespace

/// A file on its way to another file system.
struct WebDownloads::Copy {
    std::atomic_bool isCancelled = false;
    FileMove result = FileMove::Failed;
    QPointer<QThread> thread;
};

WebDownloads::WebDownloads(Shell& shell, QWidget* owner, QWebEngineProfile& profile,
                           PromptSession& session, DownloadTable& table)
    : m_shell(shell), m_owner(owner), m_session(session), m_table(table),
      m_place(shell, owner, table, profile.persistentStoragePath() + u"/downloads"_s)
{
    connect(&profile, &QWebEngineProfile::downloadRequested, this, &WebDownloads::requested);
}

WebDownloads::~WebDownloads()
{
    const QList<quint32> ids = m_running.keys();
    for (const quint32 id : ids)
        drop(id);
}

void WebDownloads::requested(QWebEngineDownloadRequest* download)
{
    if (isResumed(*download)) // the engine tries again by itself when a connection breaks
        return;
    if (download->state() == QWebEngineDownloadRequest::DownloadInProgress) {
        // A page that is saved where somebody has been asked already.
        const QString path =
            QDir(download->downloadDirectory()).filePath(download->downloadFileName());
        begin(*download, {.path = path, .target = path}, DownloadState::Running);
        emit begun();
        return;
    }
    const QPointer<WebEnginePage> page = qobject_cast<WebEnginePage*>(download->page());
    WebEnginePage* const source = sourceOf(page);
    if (m_refusals.next(source) == DownloadRefusals::Next::Refuse || waiting() >= mostWaiting) {
        m_shell.statusText(u"Ein weiterer Download dieser Seite wurde abgelehnt."_s);
        download->cancel();
    } else {
        receive(*download, source);
    }
    if (page)
        emit page->downloadDecided();
}

void WebDownloads::receive(QWebEngineDownloadRequest& download, WebEnginePage* source)
{
    const QString name = safeFileName(download.suggestedFileName());
    // The engine has not begun to write the files of all that wait.
    const auto isTaken = [this](const QString& path) {
        return std::any_of(m_running.begin(), m_running.end(),
                           [&](const Running& running) { return running.path == path; });
    };
    const QFileInfo place(m_place.waitingPlace(name, isTaken));
    download.setDownloadDirectory(place.absolutePath());
    download.setDownloadFileName(place.fileName());
    download.accept();
    begin(download, {.name = name, .path = place.filePath(), .source = source},
          DownloadState::Asking);
    m_session.askInTurn(this, [this, id = download.id()] { decide(id); });
}

void WebDownloads::begin(QWebEngineDownloadRequest& download, Running running, DownloadState state)
{
    const quint32 id = download.id();
    const QString shown = running.target.isEmpty() ? running.name : running.target;
    running.row = m_table.add({.path = shown, .state = state, .total = download.totalBytes()},
                              [this, id] { cancel(id); });
    running.request = &download;
    m_running.insert(id, running);
    follow(download);
}

bool WebDownloads::isResumed(QWebEngineDownloadRequest& download)
{
    const auto running = m_running.find(download.id());
    if (running == m_running.end())
        return false;
    if (running->request && running->request != &download) {
        running->request->disconnect(this);
        // Deleted now, it would cancel the download that both stand for.
        running->request->setParent(&download);
    }
    running->request = &download;
    const QFileInfo file(running->path);
    download.setDownloadDirectory(file.absolutePath());
    download.setDownloadFileName(file.fileName());
    download.accept();
    follow(download);
    return true;
}

void WebDownloads::follow(QWebEngineDownloadRequest& download)
{
    const auto progress = [this, &download] { report(download); };
    connect(&download, &QWebEngineDownloadRequest::receivedBytesChanged, this, progress);
    connect(&download, &QWebEngineDownloadRequest::totalBytesChanged, this, progress);
    connect(&download, &QWebEngineDownloadRequest::stateChanged, this,
            [this, &download] { ended(download); });
    connect(&download, &QWebEngineDownloadRequest::isFinishedChanged, this,
            [this, &download] { ended(download); });
    ended(download); // a small file may be complete already
}

void WebDownloads::report(QWebEngineDownloadRequest& download)
{
    const Running running = m_running.value(download.id());
    m_table.progress(running.row, download.receivedBytes(), download.totalBytes());
    if (running.target.isEmpty() && download.receivedBytes() > mostAhead && !download.isPaused())
        QTimer::singleShot(0, &download, &QWebEngineDownloadRequest::pause);
}

void WebDownloads::ended(QWebEngineDownloadRequest& download)
{
    // One that could be gone on with does not count as finished, but nobody will.
    const bool isInterrupted = download.state() == QWebEngineDownloadRequest::DownloadInterrupted;
    const bool isOver = download.isFinished() || isInterrupted;
    const quint32 id = download.id();
    const auto running = m_running.find(id);
    if (!isOver || running == m_running.end())
        return;
    m_table.progress(running->row, download.receivedBytes(), download.totalBytes());
    download.disconnect(this);
    download.deleteLater(); // and the engine forgets about it
    running->request = nullptr;
    if (download.state() == QWebEngineDownloadRequest::DownloadCompleted && !running->isRefused) {
        if (!running->target.isEmpty())
            settle(id);
        return;
    }
    m_table.finish(running->row, isInterrupted ? DownloadState::Failed : DownloadState::Cancelled,
                   failureText(download.interruptReason()));
    drop(id);
}

int WebDownloads::waiting() const
{
    return static_cast<int>(
        std::count_if(m_running.begin(), m_running.end(),
                      [](const Running& running) { return running.target.isEmpty(); }));
}

void WebDownloads::decide(quint32 id)
{
    const Running asked = m_running.value(id);
    if (asked.row == 0) // broken off meanwhile
        return;
    const PromptSession::Hold hold(m_session);
    const DropsDisabled guard(m_shell);
    const QString path = isUnwanted(asked.source) ? QString() : m_place.ask(asked.name);
    if (path.isEmpty()) {
        m_refusals.refused(asked.source);
        refuse(id);
        return;
    }
    m_refusals.forget(asked.source);
    const auto running = m_running.find(id);
    if (running != m_running.end()) {
        running->target = path;
        running->replaces = QFileInfo::exists(path) || QFileInfo(path).isSymLink();
        m_table.decide(running->row, path);
        if (running->request)
            running->request->resume();
        else
            settle(id);
    }
    emit begun(); // or the list says why not
}

void WebDownloads::decideAgain(quint32 id, const QString& problem)
{
    {
        const PromptSession::Hold hold(m_session);
        const DropsDisabled guard(m_shell);
        m_shell.prompt().tell(m_owner, problem, u"Meldung"_s, Prompt::Icon::Exclamation);
    }
    decide(id);
}

bool WebDownloads::isUnwanted(const QObject* page)
{
    const DownloadRefusals::Next next = m_refusals.next(page);
    if (next == DownloadRefusals::Next::Ask)
        return false;
    if (next == DownloadRefusals::Next::AskAboutAll &&
        !m_shell.prompt().askYesNo(m_owner, u"Es kommen noch mehr Downloads. Alle ablehnen?"_s,
                                   u"Downloads"_s, Prompt::Icon::Question)) {
        m_refusals.forget(page);
        return false;
    }
    m_shell.statusText(u"Ein weiterer Download dieser Seite wurde abgelehnt."_s);
    return true;
}

void WebDownloads::refuse(quint32 id)
{
    const auto running = m_running.find(id);
    if (running == m_running.end())
        return;
    running->isRefused = true;
    m_table.remove(running->row);
    cancel(id);
}

void WebDownloads::settle(quint32 id)
{
    const Running running = m_running.value(id);
    if (running.target == running.path) {
        settled(id, FileMove::Done);
        return;
    }
    const FileMove move = renameFile(running.path, running.target, running.replaces);
    if (move == FileMove::OtherFileSystem)
        copy(id);
    else
        settled(id, move);
}

void WebDownloads::settled(quint32 id, FileMove move)
{
    const auto running = m_running.find(id);
    running->copy.reset();
    switch (move) {
    case FileMove::Done:
        m_table.finish(running->row, DownloadState::Completed);
        m_running.erase(running);
        return;
    case FileMove::Cancelled:
        m_table.finish(running->row, DownloadState::Cancelled);
        drop(id);
        return;
    case FileMove::TargetExists: // since the user was asked
        running->target = m_place.freeBeside(running->target);
        m_table.decide(running->row, running->target);
        settle(id);
        return;
    default:
        break;
    }
    const QString problem = u"Die Datei „%1“ konnte nicht gespeichert werden: %2"_s.arg(
        QDir::toNativeSeparators(running->target), failureText(move));
    running->target.clear();
    m_table.decide(running->row, std::nullopt);
    m_session.askInTurn(this, [this, id, problem] { decideAgain(id, problem); });
}

void WebDownloads::copy(quint32 id)
{
    Running& running = m_running[id];
    const auto copy = std::make_shared<Copy>();
    running.copy = copy;
    const QString partial = partialFile(running.target);
    copy->thread = QThread::create([copy, from = running.path, partial] {
        copy->result = copyFile(from, partial, copy->isCancelled);
    });
    connect(copy->thread, &QThread::finished, copy->thread, &QObject::deleteLater);
    connect(copy->thread, &QThread::finished, this,
            [this, id, partial, copy] { copied(id, partial, copy->result); });
    copy->thread->start();
}

void WebDownloads::copied(quint32 id, const QString& partial, FileMove move)
{
    const Running running = m_running.value(id);
    if (move == FileMove::Done) {
        move = renameFile(partial, running.target, running.replaces);
        QFile::remove(move == FileMove::Done ? running.path : partial);
    }
    settled(id, move);
}

void WebDownloads::cancel(quint32 id)
{
    const Running running = m_running.value(id);
    if (running.request) {
        running.request->cancel();
    } else if (running.copy) {
        running.copy->isCancelled = true;
    } else {
        m_table.finish(running.row, DownloadState::Cancelled);
        drop(id);
    }
}

void WebDownloads::drop(quint32 id)
{
    const Running running = m_running.take(id);
    if (running.copy && running.copy->thread) {
        running.copy->isCancelled = true;
        running.copy->thread->wait();
        QFile::remove(partialFile(running.target));
    }
    // The engine may be about to do so, but not before the program has ended.
    QFile::remove(partialFile(running.path));
    if (running.path != running.target)
        QFile::remove(running.path);
}
