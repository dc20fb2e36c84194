#pragma once

#include <QString>

#include <optional>

class QUrl;

/// Who answers what the scripts of a page say and ask. Each call waits for the
/// user.
class WebScriptAnswers {
public:
    WebScriptAnswers() = default;
    WebScriptAnswers(const WebScriptAnswers&) = delete;
    WebScriptAnswers& operator=(const WebScriptAnswers&) = delete;
    virtual ~WebScriptAnswers() = default;

    virtual void alert(const QUrl& site, const QString& text) = 0;
    virtual bool confirm(const QUrl& site, const QString& text) = 0;
    /// Nothing when the user cancels.
    virtual std::optional<QString> prompt(const QUrl& site, const QString& text,
                                          const QString& preset) = 0;
    /// The page would lose what was typed into it: whether it may go.
    virtual bool leave() = 0;
};
