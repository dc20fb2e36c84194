#pragma once

#include <QObject>

class PageInput;
class QWebEnginePage;

/// Lets a page write into the clipboard when its user has just clicked or typed in it, and
/// never by itself. Reading is another matter: there the user is asked, or the engine
/// refuses.
class PageClipboard : public QObject {
    Q_OBJECT
public:
    /// Belongs to `page`.
    PageClipboard(QWebEnginePage& page, const PageInput& input);
};
