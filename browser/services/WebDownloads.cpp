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
#include <QWebEngineProfile>
#include <QWebEngineView>

using namespace Qt::StringLiterals;

namespace {

/// More than a page could want in earnest.
constexpr std::size_t mostWaiting = 200;
constexpr std::chrono::seconds patience(10);

QString firstFolder()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
    return QFileInfo(folder).isDir() ? folder : QDir::homePath();
}

} // namespace

WebDownloads::WebDownloads(Shell& shell, QWidget* owner, QWebEngineProfile& profile,
                           DownloadTable& table)
    : m_shell(shell), m_owner(owner), m_table(table)
{
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, &WebDownloads::nextDidNotCome);
    connect(&profile, &QWebEngineProfile::downloadRequested, this, &WebDownloads::requested);
}

WebDownloads::~WebDownloads() = default;

void WebDownloads::requested(QWebEngineDownloadRequest* download)
{
    if (isResumed(*download)) { // the engine tries again by itself when a connection breaks
        return;
    }
    const QPointer<WebEnginePage> page = qobject_cast<WebEnginePage*>(download->page());
    std::unique_ptr<Waiting> asked;
    if (m_next && m_next->url == download->url()) {
        m_patience.stop();
        asked = std::move(m_next);
    }
    if (download->state() == QWebEngineDownloadRequest::DownloadInProgress) {
        begin(*download); // a page that is saved where somebody has been asked already
        return;
    }
    if (m_isAsking) {
        putOff(*download, page);
        return;
    }
    m_isAsking = true;
    decide(*download, page);
    m_isAsking = false;
    if (page) {
        emit page->downloadDecided();
    }
    QTimer::singleShot(0, this, &WebDownloads::askForNext);
}

void WebDownloads::decide(QWebEngineDownloadRequest& download, WebEnginePage* page)
{
    std::unique_ptr<WebEnginePage::Question> question;
    QWidget* parent = m_owner;
    if (page != nullptr) {
        question = std::make_unique<WebEnginePage::Question>(*page);
        if (const QWebEngineView* view = QWebEngineView::forPage(page)) {
            parent = view->window();
        }
    }
    const DropsDisabled guard(m_shell);
    const QPointer<QWebEngineDownloadRequest> alive = &download;
    // The page's window may be a window of its own, and close meanwhile.
    const QPointer<QWidget> window = parent;
    const QString path = askForPath(download, parent);
    if (path.isEmpty()) {
        if (alive) {
            download.cancel();
        }
        askWhetherToGoOn(window);
        return;
    }
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

QString WebDownloads::askForPath(const QWebEngineDownloadRequest& download, QWidget* parent)
{
    const QPointer<QWidget> window = parent;
    QString proposal = proposedPath(safeFileName(download.suggestedFileName()));
    while (true) {
        const QString path =
            m_shell.prompt().saveFileAs(window, u"Datei speichern unter"_s, proposal);
        const QFileInfo folder(QFileInfo(path).absolutePath());
        QString obstacle;
        if (path.isEmpty()) {
            return {};
        }
        if (!folder.isDir() || !folder.isWritable()) {
            obstacle = u"In den Ordner \"%1\" kann nicht geschrieben werden."_s.arg(
                QDir::toNativeSeparators(folder.filePath()));
        } else if (m_table.isTarget(path)) {
            obstacle = u"Diese Datei wird gerade geladen. Wählen Sie einen anderen Namen."_s;
        } else {
            return path;
        }
        m_shell.prompt().tell(window, obstacle, u"Meldung"_s, Prompt::Icon::Exclamation);
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

void WebDownloads::cancelAll()
{
    m_waiting.clear();
    m_next.reset();
    m_patience.stop();
    m_table.cancelAll();
}

void WebDownloads::putOff(QWebEngineDownloadRequest& download, WebEnginePage* page)
{
    const QUrl url = download.url();
    const QString name = download.suggestedFileName();
    download.cancel();
    if (page == nullptr || m_waiting.size() >= mostWaiting) {
        m_table.add({.path = proposedPath(safeFileName(name)),
                     .state = DownloadState::Failed,
                     .failure = u"Es waren zu viele Downloads auf einmal."_s});
        emit begun();
        return;
    }
    m_waiting.push_back({url, name, page, std::make_unique<WebEnginePage::Question>(*page)});
}

void WebDownloads::askWhetherToGoOn(QWidget* parent)
{
    if (m_waiting.empty()) {
        return;
    }
    const QString text =
        m_waiting.size() == 1
            ? u"Es wartet noch ein Download. Soll auch er entfallen ?"_s
            : u"Es warten noch %1 Downloads. Sollen auch sie entfallen ?"_s.arg(m_waiting.size());
    if (m_shell.prompt().askYesNo(parent, text, u"Downloads"_s, Prompt::Icon::Question)) {
        const std::deque<Waiting> dropped = std::exchange(m_waiting, {});
        for (const Waiting& waiting : dropped) {
            if (waiting.page) {
                emit waiting.page->downloadDecided();
            }
        }
    }
}

void WebDownloads::askForNext()
{
    if (m_isAsking || m_next || m_waiting.empty()) {
        return;
    }
    m_next = std::make_unique<Waiting>(std::move(m_waiting.front()));
    m_waiting.pop_front();
    m_patience.start(patience);
    if (m_next->page) {
        m_next->page->download(m_next->url, m_next->name);
    }
}

void WebDownloads::nextDidNotCome()
{
    const std::unique_ptr<Waiting> lost = std::move(m_next);
    m_table.add({.path = proposedPath(safeFileName(lost->name)),
                 .state = DownloadState::Failed,
                 .failure = u"Der Server hat die Datei kein zweites Mal geschickt."_s});
    if (lost->page) {
        emit lost->page->downloadDecided();
    }
    emit begun();
    askForNext();
}
