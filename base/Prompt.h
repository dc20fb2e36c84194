#pragma once

#include <QString>

class QWidget;

/// The questions and messages that windows put to the user. Windows ask through
/// this face only, so that tests can answer for the user. All texts are plain.
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
    /// A save dialog that neither asks before overwriting nor adds a suffix.
    /// Returns the full path, or an empty text when the user cancels.
    virtual QString saveFileName(QWidget* parent, const SaveRequest& request) = 0;
    /// A save dialog that starts with `path` chosen, shows files of its kind or all, and
    /// asks before an existing file is chosen. Returns the full path, or an
    /// empty text when the user cancels.
    virtual QString saveFileAs(QWidget* parent, const QString& title, const QString& path) = 0;
};
