#pragma once

#include <QString>

#include <optional>

class QWidget;

/// A question or a message about a page. All texts are plain; what comes from
/// the page has been cleaned by whoever asks.
struct PageQuestion {
    QString title = {};
    QString text = {};
    QString accept = QStringLiteral("OK");
    /// Empty: there is nothing to choose, just a message to be dismissed.
    QString refuse = {};
    /// Accepting can do harm: the refusing answer is the default one.
    bool isRisky = false;
    /// The label of a check box under the text; empty for none.
    QString checkBox = {};
    /// What stands in the line to type an answer in, if there is one.
    std::optional<QString> input = std::nullopt;
};

/// What the user said. Nothing is accepted when the question was closed, or
/// went away together with its window.
struct PageAnswer {
    bool isAccepted = false;
    bool isChecked = false;
    QString input = {};
};

/// A server or a proxy wants to know who the user is.
struct LogInQuestion {
    /// The site, or the proxy.
    QString site;
    /// What the site calls the place that it guards; may be empty.
    QString realm;
    bool isProxy = false;
    /// Others can read the password on its way.
    bool isReadable = false;
    /// The user name that was given last.
    QString user;
    /// What the user has answered before was wrong.
    bool hasFailed = false;
};

struct LogIn {
    QString user;
    QString password;
};

/// Puts the questions of pages to the user. Pages ask through this face only,
/// so that tests can answer for the user. Each call waits for the answer, and
/// the page's window may be gone when it returns.
class PageAsker {
public:
    PageAsker() = default;
    PageAsker(const PageAsker&) = delete;
    PageAsker& operator=(const PageAsker&) = delete;
    virtual ~PageAsker() = default;

    virtual PageAnswer ask(QWidget* parent, const PageQuestion& question) = 0;
    /// Nothing when the user will not log in.
    virtual std::optional<LogIn> logIn(QWidget* parent, const LogInQuestion& question) = 0;
};
