#pragma once

#include "engine/page/WebEnginePage.h"
#include "pages/downloads/DownloadPlace.h"
#include "pages/downloads/DownloadTable.h"

#include <QHash>
#include <QPointer>
#include <QUrl>

#include <functional>
#include <memory>

class MovingFile;
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
/// these two - `moved`.
///
/// One that has ended without success is kept until it is taken out of the list, so that it can
/// be loaded once more, with its name and its place: `reload`. The engine continues it, if the
/// server allows that, or begins it anew, as long as the frame is there that asked for it (seen
/// with Qt 6.4); else `loadAnew` has a page that nobody sees ask for it.
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
    using Id = DownloadTable::Id;
    /// A download that is not complete.
    struct Transfer {
        /// The engine's number.
        quint32 number = 0;
        QUrl address = {};
        /// What the file is called in the question.
        QString name = {};
        /// The file that the engine writes.
        QString waitingPath = {};
        /// The file that it is going to be; empty until the user has said so.
        QString target = {};
        /// The user has agreed that a file at `target` is replaced.
        bool mayReplace = false;
        /// The question where to is open, or will be.
        bool isAsked = false;
        /// It is the answer to a form that was sent.
        bool isFromForm = false;
        /// The page that has asked for it: the request itself goes on pointing to it when it
        /// has gone (seen with Qt 6.4).
        QPointer<QWebEnginePage> page = {};
        /// The same, if it has a document that offers the file.
        QPointer<WebEnginePage> source = {};
        /// Keeps a page without a document, whose window closes at once: the frame that has
        /// asked for the file.
        std::shared_ptr<WebEnginePage::Keeper> keeper = {};
        /// Asks for the file once more. Null unless it has been loaded anew.
        std::shared_ptr<QWebEnginePage> loader = {};
        /// Null while a new one is awaited, and as soon as the file is whole.
        QPointer<QWebEngineDownloadRequest> request = {};
        /// Null unless the file is on its way to `target`.
        std::shared_ptr<MovingFile> move = {};
    };

    void requested(QWebEngineDownloadRequest* download);
    bool takeOverRetry(QWebEngineDownloadRequest& download);
    bool takeOverLoader(QWebEngineDownloadRequest& download);
    void take(Id id, QWebEngineDownloadRequest& download);
    void receive(QWebEngineDownloadRequest& download, WebEnginePage* page);
    Id begin(QWebEngineDownloadRequest& download, const Transfer& transfer, DownloadState state);
    void follow(Id id, QWebEngineDownloadRequest& download);
    void reportProgress(Id id, QWebEngineDownloadRequest& download);
    /// Where a new file may wait.
    QString freeWaitingPath(const QString& name) const;

    bool isWaiting(Id id) const;
    int waitingCount() const;
    void askInTurn(Id id, const std::function<void()>& ask);
    void askPlace(Id id);
    void askPlaceAgain(Id id, const QString& problem);
    void refuse(Id id);

    void checkEnd(Id id, QWebEngineDownloadRequest& download);
    void fail(Id id, const QString& failure);
    void moveToTarget(Id id);
    void moved(Id id, FileMove result);

    void pause(Id id);
    void goOn(Id id);
    void cancel(Id id);
    void reload(Id id);
    void loadAnew(Id id);
    /// Helps the download if the engine does not tell about its next request for it.
    void awaitRetry(Id id, const QWebEngineDownloadRequest* former);
    void release(Id id);
    static void removeFiles(const Transfer& transfer);
    /// It has gone from the list.
    void forget(Id id);

    Shell& m_shell;
    QWidget* m_owner;
    QWebEngineProfile& m_profile;
    PromptSession& m_session;
    DownloadTable& m_table;
    DownloadPlace m_place;
    QHash<Id, Transfer> m_transfers;
};
