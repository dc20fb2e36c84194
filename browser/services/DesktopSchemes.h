#pragma once

class QUrl;

/// Whether the engine itself shows addresses like `url`. All others it would hand to
/// the desktop without a question.
bool isForEngine(const QUrl& url);

/// Whether `url` is a script, which the engine runs in the page shown.
bool isScript(const QUrl& url);

/// Whether other programs of the desktop open addresses like `url` ("mailto:",
/// "tel:" and so on). Addresses that the engine shows, and those that could
/// make the desktop run or open something local or in the local network, are not
/// among them.
bool isForDesktop(const QUrl& url);

/// Whether `url` is neither for the one nor for the others.
bool isForNobody(const QUrl& url);
