#pragma once

#include "browser/WebEnginePage.h"
#include "browser/services/DownloadTable.h"

#include <QElapsedTimer>
#include <QHash>
#include <QPointer>

class QWebEngineDownloadRequest;
class QWebEngineProfile;
class Shell;

/// Asks for every download of a profile where it is to go, and keeps the table
/// of the downloads. The engine does nothing, in all windows, until it knows
/// (seen with Qt 6.4), so that there is one question at a time.
class WebDownloads : public QObject {
    Q_OBJECT
public:
    /// All outlive it. `owner` is the window that the questions belong to: a page's own may
    /// close meanwhile, or show it on the whole screen for a while only.
    WebDownloads(Shell& shell, QWidget* owner, QWebEngineProfile& profile, DownloadTable& table);

signals:
    /// A download has begun, or has failed to.
    void begun();

private:
    /// How many downloads the user has refused in a row, and when the last one.
    struct Refusals {
        int count = 0;
        QElapsedTimer last;
    };
    struct Running {
        DownloadTable::Id row = 0;
        QString path;
        QPointer<QWebEngineDownloadRequest> request;
    };

    void requested(QWebEngineDownloadRequest* download);
    bool isResumed(QWebEngineDownloadRequest& download);
    void decide(QWebEngineDownloadRequest& download, WebEnginePage* page);
    QString askForPath(const QWebEngineDownloadRequest& download);
    QString proposedPath(const QString& name) const;
    void begin(QWebEngineDownloadRequest& download);
    void follow(QWebEngineDownloadRequest& download);
    bool isUnwanted(const QObject* page);
    void cancel(quint32 id);
    void ended(QWebEngineDownloadRequest& download);

    Shell& m_shell;
    QWidget* m_owner;
    DownloadTable& m_table;
    /// Where the last file went.
    QString m_folder;
    /// Under the engine's numbers.
    QHash<quint32, Running> m_running;
    /// Of each page that has a document. The windows that pages open for one download
    /// each have none, and count together.
    QHash<const QObject*, Refusals> m_refusals;
};
