#pragma once

#include "engine/page/WebEnginePage.h"
#include "pages/downloads/DownloadPlace.h"
#include "pages/downloads/DownloadTable.h"

#include <QHash>
#include <QPointer>

#include <memory>

class PromptSession;
class QWebEngineDownloadRequest;
class QWebEngineProfile;
class Shell;
enum class FileMove;

/// Asks for every download of a profile where it is to be saved, and keeps the table of the
/// downloads. Until the engine knows a place for a file it does nothing else in any window
/// (seen with Qt 6.4). So each file comes into a waiting place at once, and is moved when it is
/// whole and the user has said where to.
///
/// The way of a download: `requested` - `receive` - `begin` - `askPlace`, when it is its turn -
/// `checkEnd`, whenever the engine's state changes - `moveToTarget`, after the later one of
/// these two - `copyToTarget` and `copied`, if the target is in another file system - `moved`.
class WebDownloads : public QObject {
    Q_OBJECT
public:
    /// All outlive it. `owner` is the window that the questions belong to: a page's own may
    /// close meanwhile, or show it on the whole screen for a while only. For `spareFolder` see
    /// `DownloadPlace`.
    WebDownloads(Shell& shell, QWidget* owner, QWebEngineProfile& profile, PromptSession& session,
                 DownloadTable& table, const QString& spareFolder);
    /// Removes the files of the downloads that are not finished.
    ~WebDownloads() override;
    Q_DISABLE_COPY_MOVE(WebDownloads)

    /// What the user has refused of `page` no longer counts. Null stands for the windows that
    /// pages open for one download each, which have no document and count together.
    void forgetRefusals(const QObject* page) { m_place.forgetRefusals(page); }

signals:
    /// The user has agreed to a download. It is in the table, running, ended or failed.
    void accepted();

private:
    struct Copy;
    /// A download that has not ended.
    struct Transfer {
        DownloadTable::Id entry = 0;
        /// What the file is called in the question.
        QString name = {};
        /// The file that the engine writes.
        QString waitingPath = {};
        /// The file that it is going to be; empty until the user has said so.
        QString target = {};
        /// The user has agreed that a file at `target` is replaced.
        bool mayReplace = false;
        bool isRefused = false;
        /// The page that offers it, if it has a document to do so with.
        QPointer<WebEnginePage> source = {};
        /// Null as soon as the file is whole.
        QPointer<QWebEngineDownloadRequest> request = {};
        /// Null unless the file is being copied to `target`.
        std::shared_ptr<Copy> copy = {};
    };

    void requested(QWebEngineDownloadRequest* download);
    bool takeOverRetry(QWebEngineDownloadRequest& download);
    void receive(QWebEngineDownloadRequest& download, WebEnginePage* source);
    void begin(QWebEngineDownloadRequest& download, Transfer transfer, DownloadState state);
    void follow(QWebEngineDownloadRequest& download);
    void reportProgress(QWebEngineDownloadRequest& download);

    int waitingCount() const;
    void askPlace(quint32 id);
    void askPlaceAgain(quint32 id, const QString& problem);
    void refuse(quint32 id);

    void checkEnd(QWebEngineDownloadRequest& download);
    void moveToTarget(quint32 id);
    void copyToTarget(quint32 id);
    void copied(quint32 id, const QString& partial, FileMove result);
    void moved(quint32 id, FileMove result);

    void cancel(quint32 id);
    void discard(quint32 id);

    Shell& m_shell;
    QWidget* m_owner;
    PromptSession& m_session;
    DownloadTable& m_table;
    DownloadPlace m_place;
    /// By the engine's numbers.
    QHash<quint32, Transfer> m_transfers;
};
