#pragma once

#include <QString>
#include <QWebEngineDownloadRequest>

/// Why a download did not succeed, for the user. Empty for `NoReason`.
QString failureText(QWebEngineDownloadRequest::DownloadInterruptReason reason);
