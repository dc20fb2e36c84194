#pragma once

#include "browser/WebEnginePage.h"
#include "browser/services/DownloadTable.h"

#include <QHash>
#include <QPointer>
#include <QTimer>
#include <QUrl>

#include <deque>
#include <memory>

class QWebEngineDownloadRequest;
class QWebEngineProfile;
class Shell;

/// Asks for every download of a profile where it is to go, and keeps the table
/// of the downloads. It asks one question at a time: while one is open, further
/// downloads wait and are asked of their servers once more.
class WebDownloads : public QObject {
    Q_OBJECT
public:
    /// All outlive it. `owner` is the window that questions without a page belong to.
    WebDownloads(Shell& shell, QWidget* owner, QWebEngineProfile& profile, DownloadTable& table);
    ~WebDownloads() override;

    /// Breaks all downloads off; nothing of them is left on the disk.
    void cancelAll();

signals:
    /// A download has begun, or has failed to.
    void begun();

private:
    struct Waiting {
        QUrl url;
        QString name;
        QPointer<WebEnginePage> page;
        /// Keeps the page, whose window may go.
        std::unique_ptr<WebEnginePage::Question> hold;
    };

    struct Running {
        DownloadTable::Id row = 0;
        QString path;
        QPointer<QWebEngineDownloadRequest> request;
    };

    void requested(QWebEngineDownloadRequest* download);
    bool isResumed(QWebEngineDownloadRequest& download);
    void decide(QWebEngineDownloadRequest& download, WebEnginePage* page);
    QString askForPath(const QWebEngineDownloadRequest& download, QWidget* parent);
    QString proposedPath(const QString& name) const;
    void begin(QWebEngineDownloadRequest& download);
    void follow(QWebEngineDownloadRequest& download);
    void cancel(quint32 id);
    void ended(QWebEngineDownloadRequest& download);
    void putOff(QWebEngineDownloadRequest& download, WebEnginePage* page);
    void askWhetherToGoOn(QWidget* parent);
    void askForNext();
    void nextDidNotCome();

    Shell& m_shell;
    QWidget* m_owner;
    DownloadTable& m_table;
    /// Where the last file went.
    QString m_folder;
    bool m_isAsking = false;
    /// Under the engine's numbers.
    QHash<quint32, Running> m_running;
    std::deque<Waiting> m_waiting;
    /// The one that has been asked of its server again.
    std::unique_ptr<Waiting> m_next;
    QTimer m_patience;
};
