#pragma once

#include "browser/PageSafety.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <vector>

class PromptSession;
class WebEnginePage;

/// Finds out how safe the page shown is, as far as the engine tells it, and what the user has
/// said about it. Whether a connection is encrypted only its address tells, and the certificate
/// errors: parts that are not encrypted the engine does not load into an encrypted page (seen
/// with Qt 6.4), so that the address stands for the whole.
class WebSafety : public QObject {
    Q_OBJECT
public:
    /// `session` outlives it.
    WebSafety(WebEnginePage& page, PromptSession& session);

    PageSafety safety() const;
    /// Takes back the answer that is called `id` in `safety`.
    void takeBack(const QString& id);

signals:
    /// It has changed; the receiver may destroy this object.
    void changed();

private:
    struct Entry {
        PageSafety::Answer answer;
        std::function<void()> takeBack;
    };

    void look();
    /// The address that the engine has arrived at.
    QUrl shown() const;
    std::vector<Entry> entries(const QUrl& url) const;

    QPointer<WebEnginePage> m_page;
    PromptSession& m_session;
    QUrl m_reported;
    PageSafety m_told;
};
