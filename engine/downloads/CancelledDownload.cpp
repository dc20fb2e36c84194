#include "engine/downloads/CancelledDownload.h"

#include <QDir>
#include <QFile>
#include <QWebEngineDownloadRequest>

void cancelAndDelete(QWebEngineDownloadRequest& download)
{
    const auto end = [&download] {
        if (download.state() == QWebEngineDownloadRequest::DownloadCompleted)
            QFile::remove(QDir(download.downloadDirectory()).filePath(download.downloadFileName()));
        download.deleteLater();
    };
    download.cancel();
    if (download.isFinished())
        end();
    else
        QObject::connect(&download, &QWebEngineDownloadRequest::isFinishedChanged, &download, end);
}
