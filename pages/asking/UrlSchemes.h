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

/// Whether `url` is neither for the engine nor for other programs, and so is not opened.
/// The program's own addresses are among them: they only stand for something that it shows.
bool isForNobody(const QUrl& url);

/// Whether a click on a link to `url` in the page at `page` could open it.
bool canPageOpen(const QUrl& url, const QUrl& page);
