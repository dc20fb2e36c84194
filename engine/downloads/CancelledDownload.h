#pragma once

class QWebEngineDownloadRequest;

/// Has the engine remove what it has written, however near the end it is; then deletes `download`.
void cancelAndDelete(QWebEngineDownloadRequest& download);
