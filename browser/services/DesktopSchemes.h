#pragma once

class QUrl;

/// Whether other programs of the desktop open addresses like `url` ("mailto:",
/// "tel:" and so on). Addresses that the engine shows, and those that could
/// make the desktop run or open something local, are not among them.
bool isForDesktop(const QUrl& url);
