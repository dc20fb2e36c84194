#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QUrl>

class AskingPage;
class PageInput;

/// Hands addresses of other programs ("mailto:" and so on) to the desktop, when
/// the user has clicked on one and agrees.
class DesktopLinks : public QObject {
    Q_OBJECT
public:
    DesktopLinks(AskingPage& asking, const PageInput& input, QObject* parent);

private:
    void met(const QUrl& url, bool isUsersOwn);
    bool takeClick();
    /// `asker`: the site that wants it, empty when it is the user.
    void open(const QUrl& url, const QString& asker);
    bool ask(const QUrl& url, const QString& address, const QString& asker);

    AskingPage& m_asking;
    /// Runs since the user's last click or key, until it has been used up.
    QElapsedTimer m_sinceInput;
};
