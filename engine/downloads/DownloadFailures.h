#pragma once

#include <QString>
#include <QWebEngineDownloadRequest>

enum class FileMove;

/// Why a download did not succeed, for the user. Empty for `NoReason`.
QString failureText(QWebEngineDownloadRequest::DownloadInterruptReason reason);

/// Why a file could not be written where the user wants it, for the user.
QString failureText(FileMove result);
