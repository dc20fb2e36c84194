#include "browser/services/WebDownloads.h"

#include "base/Prompt.h"
#include "base/WindowGuards.h"
#include "browser/services/DownloadFailures.h"
#include "browser/services/DownloadNames.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QWebEngineDownloadRequest>
#include <QWebEngineHistory>
#include <QWebEngineProfile>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// Downloads refused in a row that pages may go on asking after.
constexpr int bearable = 2;
/// What comes that soon after a refusal goes on from it.
constexpr std::chrono::milliseconds burst(3000);

QString firstFolder()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
    return QFileInfo(folder).isDir() ? folder : QDir::homePath();
}

/// Who offers what `page` is about to load, if it has a document to do so with.
const QObject* sourceOf(const WebEnginePage* page)
{
    return page != nullptr && page->history()->count() > 0 ? page : nullptr;
}

} // namespace

WebDownloads::WebDownloads(Shell& shell, QWidget* owner, QWebEngineProfile& profile,
                           DownloadTable& table)
    : m_shell(shell), m_owner(owner), m_table(table)
{
    connect(&profile, &QWebEngineProfile::downloadRequested, this, &WebDownloads::requested);
}

void WebDownloads::requested(QWebEngineDownloadRequest* download)
{
    if (isResumed(*download)) { // the engine tries again by itself when a connection breaks
        return;
    }
    const QPointer<WebEnginePage> page = qobject_cast<WebEnginePage*>(download->page());
    if (download->state() == QWebEngineDownloadRequest::DownloadInProgress) {
        begin(*download); // a page that is saved where somebody has been asked already
        return;
    }
    decide(*download, page);
    if (page) {
        emit page->downloadDecided();
    }
}

void WebDownloads::decide(QWebEngineDownloadRequest& download, WebEnginePage* page)
{
    std::unique_ptr<WebEnginePage::Question> question;
    const QObject* const source = sourceOf(page);
    if (page != nullptr) {
        question = std::make_unique<WebEnginePage::Question>(*page);
    }
    const DropsDisabled guard(m_shell);
    const QPointer<QWebEngineDownloadRequest> alive = &download;
    const QString path = isUnwanted(source) ? QString() : askForPath(download);
    if (path.isEmpty()) {
        Refusals& refusals = m_refusals[source];
        ++refusals.count;
        refusals.last.start();
        if (alive) {
            download.cancel();
        }
        return;
    }
    m_refusals.remove(source);
    const QFileInfo file(path);
    m_folder = file.absolutePath();
    if (!alive || download.state() != QWebEngineDownloadRequest::DownloadRequested) {
        m_table.add({.path = path,
                     .state = DownloadState::Failed,
                     .failure = u"Der Download wurde schon vorher abgebrochen."_s});
        emit begun();
        return;
    }
    download.setDownloadDirectory(m_folder);
    download.setDownloadFileName(file.fileName());
    download.accept();
    begin(download);
}

QString WebDownloads::proposedPath(const QString& name) const
{
    const QDir folder(QFileInfo(m_folder).isDir() ? m_folder : firstFolder());
    return folder.filePath(freeFileName(name, [&](const QString& candidate) {
        const QString path = folder.filePath(candidate);
        return QFileInfo::exists(path) || QFileInfo(path).isSymLink() ||
               QFileInfo::exists(partialFile(path)) || m_table.isTarget(path);
    }));
}

QString WebDownloads::askForPath(const QWebEngineDownloadRequest& download)
{
    QString proposal = proposedPath(safeFileName(download.suggestedFileName()));
    while (true) {
        QString path = m_shell.prompt().saveFileAs(m_owner, u"Datei speichern unter"_s, proposal);
        const QFileInfo folder(QFileInfo(path).absolutePath());
        QString obstacle;
        if (path.isEmpty()) {
            return {};
        }
        if (!folder.isDir() || !folder.isWritable()) {
            obstacle = u"In den Ordner „%1“ kann nicht geschrieben werden."_s.arg(
                QDir::toNativeSeparators(folder.filePath()));
        } else if (m_table.isTarget(path)) {
            obstacle = u"Diese Datei wird gerade geladen. Wählen Sie einen anderen Namen."_s;
        } else {
            return path;
        }
        m_shell.prompt().tell(m_owner, obstacle, u"Meldung"_s, Prompt::Icon::Exclamation);
        proposal = folder.isDir() ? path : proposal;
    }
}

void WebDownloads::begin(QWebEngineDownloadRequest& download)
{
    const QString path = QDir(download.downloadDirectory()).filePath(download.downloadFileName());
    const DownloadTable::Id row = m_table.add({.path = path, .total = download.totalBytes()},
                                              [this, id = download.id()] { cancel(id); });
    m_running.insert(download.id(), {row, path, &download});
    follow(download);
    emit begun();
}

bool WebDownloads::isResumed(QWebEngineDownloadRequest& download)
{
    const auto running = m_running.find(download.id());
    if (running == m_running.end()) {
        return false;
    }
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
    const auto report = [this, &download] {
        m_table.progress(m_running.value(download.id()).row, download.receivedBytes(),
                         download.totalBytes());
    };
    connect(&download, &QWebEngineDownloadRequest::receivedBytesChanged, this, report);
    connect(&download, &QWebEngineDownloadRequest::totalBytesChanged, this, report);
    connect(&download, &QWebEngineDownloadRequest::stateChanged, this,
            [this, &download] { ended(download); });
    connect(&download, &QWebEngineDownloadRequest::isFinishedChanged, this,
            [this, &download] { ended(download); });
    ended(download); // a small file may be complete already
}

void WebDownloads::cancel(quint32 id)
{
    if (const QPointer<QWebEngineDownloadRequest> request = m_running.value(id).request) {
        request->cancel();
    }
}

void WebDownloads::ended(QWebEngineDownloadRequest& download)
{
    // One that could be gone on with does not count as finished, but nobody will.
    const bool isInterrupted = download.state() == QWebEngineDownloadRequest::DownloadInterrupted;
    const bool isOver = download.isFinished() || isInterrupted;
    if (!isOver || !m_running.contains(download.id())) {
        return;
    }
    const Running running = m_running.take(download.id());
    m_table.progress(running.row, download.receivedBytes(), download.totalBytes());
    download.disconnect(this);
    download.deleteLater(); // and the engine forgets about it
    switch (download.state()) {
    case QWebEngineDownloadRequest::DownloadCompleted:
        m_table.finish(running.row, DownloadState::Completed);
        return;
    case QWebEngineDownloadRequest::DownloadInterrupted:
        m_table.finish(running.row, DownloadState::Failed, failureText(download.interruptReason()));
        break;
    default:
        m_table.finish(running.row, DownloadState::Cancelled);
        break;
    }
    // The engine may be about to do so, but not before the program has ended.
    QFile::remove(partialFile(running.path));
}

bool WebDownloads::isUnwanted(const QObject* page)
{
    m_refusals.removeIf([](const auto& entry) { return entry->last.hasExpired(burst.count()); });
    const int refusals = m_refusals.value(page).count;
    if (refusals < bearable) {
        return false;
    }
    if (refusals == bearable &&
        !m_shell.prompt().askYesNo(m_owner, u"Es kommen noch mehr Downloads. Alle ablehnen?"_s,
                                   u"Downloads"_s, Prompt::Icon::Question)) {
        m_refusals.remove(page);
        return false;
    }
    m_shell.statusText(u"Ein weiterer Download dieser Seite wurde abgelehnt."_s);
    return true;
}
