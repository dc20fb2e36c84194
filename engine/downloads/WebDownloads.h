#pragma once

#include "engine/page/WebEnginePage.h"
#include "pages/downloads/DownloadPlace.h"
#include "pages/downloads/DownloadRefusals.h"
#include "pages/downloads/DownloadTable.h"

#include <QHash>
#include <QPointer>

#include <memory>

class PromptSession;
class QWebEngineDownloadRequest;
class QWebEngineProfile;
class Shell;
enum class FileMove;

/// Asks for every download of a profile where it is to go, and keeps the table of the
/// downloads. Until the engine knows a place, it stands still in all windows (seen with
/// Qt 6.4). So each file comes into a waiting place at once, and is moved when it has come
/// and the user has said where to.
class WebDownloads : public QObject {
    Q_OBJECT
public:
    /// All outlive it. `owner` is the window that the questions belong to: a page's own may
    /// close meanwhile, or show it on the whole screen for a while only.
    WebDownloads(Shell& shell, QWidget* owner, QWebEngineProfile& profile, PromptSession& session,
                 DownloadTable& table);
    /// Removes what has not found its place.
    ~WebDownloads() override;
    Q_DISABLE_COPY_MOVE(WebDownloads)

    /// What the user has refused of `page` no longer counts. None: of the windows that pages
    /// open for one download each, which have no document and count together.
    void forgetRefusals(const QObject* page) { m_refusals.forget(page); }

signals:
    /// A download has got its place, or has failed.
    void begun();

private:
    struct Copy;
    struct Running {
        DownloadTable::Id row = 0;
        /// What the file is called in the question.
        QString name = {};
        /// What the engine writes.
        QString path = {};
        /// Where it is to go; empty until the user has said so.
        QString target = {};
        /// The user has agreed that a file at `target` goes.
        bool replaces = false;
        bool isRefused = false;
        /// The page that offers it, if it has a document to do so with.
        QPointer<WebEnginePage> source = {};
        /// None when all of it is there.
        QPointer<QWebEngineDownloadRequest> request = {};
        std::shared_ptr<Copy> copy = {};
    };

    void requested(QWebEngineDownloadRequest* download);
    bool isResumed(QWebEngineDownloadRequest& download);
    void receive(QWebEngineDownloadRequest& download, WebEnginePage* source);
    void begin(QWebEngineDownloadRequest& download, Running running, DownloadState state);
    void follow(QWebEngineDownloadRequest& download);
    void report(QWebEngineDownloadRequest& download);
    void ended(QWebEngineDownloadRequest& download);
    int waiting() const;
    void decide(quint32 id);
    void decideAgain(quint32 id, const QString& problem);
    bool isUnwanted(const QObject* page);
    void refuse(quint32 id);
    void settle(quint32 id);
    void settled(quint32 id, FileMove move);
    void copy(quint32 id);
    void copied(quint32 id, const QString& partial, FileMove move);
    void cancel(quint32 id);
    /// Takes it out of those running, and what has come of it off the disk.
    void drop(quint32 id);

    Shell& m_shell;
    QWidget* m_owner;
    PromptSession& m_session;
    DownloadTable& m_table;
    DownloadPlace m_place;
    DownloadRefusals m_refusals;
    /// Under the engine's numbers.
    QHash<quint32, Running> m_running;
};
