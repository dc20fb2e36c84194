#pragma once

#include <QString>

#include <optional>

class QWidget;

/// The one face through which the program and its pages ask the user and tell him
/// something, so that tests can answer for him. All texts are plain; who passes words of
/// strangers on has cleaned them. Each call waits for the answer; what it was called
/// from, the parent included, may be gone when it returns.
class Prompt {
public:
    enum class Icon { None, Information, Question, Exclamation, Critical };

    struct SaveRequest {
        QString title;
        /// Initial folder, with the platform's separators.
        QString directory;
        /// "Caption|patterns", the patterns separated by ";": the caption is shown as it stands.
        QString filter;
        /// A further filter of the same form, or empty.
        QString secondFilter;
    };

    /// A question or a message about a page.
    struct Question {
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

    /// What the user said to a `Question`. Nothing is accepted when the dialog was closed,
    /// or went away together with its parent.
    struct Answer {
        bool isAccepted = false;
        bool isChecked = false;
        QString input = {};
    };

    /// A server or a proxy wants to know who the user is.
    struct LogInQuestion {
        /// The site, or the proxy.
        QString site;
        /// What the site calls the part of it that is locked; may be empty.
        QString realm;
        bool isProxy = false;
        /// Others can read the password on its way.
        bool isUnencrypted = false;
        /// The user name that was given last.
        QString user;
        /// What the user has answered before was wrong.
        bool hasFailed = false;
    };

    struct LogIn {
        QString user;
        QString password;
    };

    Prompt() = default;
    Prompt(const Prompt&) = delete;
    Prompt& operator=(const Prompt&) = delete;
    virtual ~Prompt() = default;

    /// Shows `text` with an "OK" button and waits until it is dismissed.
    virtual void tell(QWidget* parent, const QString& text, const QString& title, Icon icon) = 0;
    /// Asks with "Ja" (default) and "Nein"; the question cannot be escaped. True for "Ja".
    virtual bool askYesNo(QWidget* parent, const QString& text, const QString& title,
                          Icon icon) = 0;
    /// Asks with "OK" (default) and "Abbrechen"; Escape stands for the latter. True for "OK".
    virtual bool askOkCancel(QWidget* parent, const QString& text, const QString& title,
                             Icon icon) = 0;
    /// Asks with buttons, a check box and a line for input as `question` wants them. Escape
    /// and the close box refuse.
    virtual Answer ask(QWidget* parent, const Question& question) = 0;
    /// Asks for a user name and a password. Nothing when the user will not log in.
    virtual std::optional<LogIn> askLogIn(QWidget* parent, const LogInQuestion& question) = 0;
    /// A save dialog that neither asks before overwriting nor adds a suffix.
    /// Returns the full path, or an empty text when the user cancels.
    virtual QString saveFileName(QWidget* parent, const SaveRequest& request) = 0;
    /// A save dialog that starts with `path` chosen, shows files of its kind or all, and
    /// asks before an existing file is chosen. Returns the full path, or an
    /// empty text when the user cancels.
    virtual QString saveFileAs(QWidget* parent, const QString& title, const QString& path) = 0;
};
