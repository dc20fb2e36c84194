#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QUrl>

class PagePrompt;
class PageInput;

/// Hands addresses of other programs ("mailto:" and so on) to the desktop, when
/// the user has clicked on one and agrees. Of a click on a file, which the engine opens for
/// no page of the net, it says so.
class DesktopLinks : public QObject {
    Q_OBJECT
public:
    DesktopLinks(PagePrompt& prompt, const PageInput& input, QObject* parent);

private:
    void requested(const QUrl& url, bool isUsersOwn);
    /// Whether the user has just clicked; each click counts once.
    bool takeClick();
    /// `site` wants it; empty when it is the user.
    void open(const QUrl& url, const QString& site);
    bool ask(const QUrl& url, const QString& address, const QString& site);

    PagePrompt& m_prompt;
    /// Runs since the user's last click or key, until that has led somewhere.
    QElapsedTimer m_sinceInput;
};
