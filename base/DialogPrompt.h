#pragma once

#include "base/Prompt.h"

/// Prompt with real windows: message boxes, the dialogs of `QuestionDialogs`, and the
/// toolkit's own save dialog. They belong to the window that asks and go with it.
class DialogPrompt : public Prompt {
public:
    void tell(QWidget* parent, const QString& text, const QString& title, Icon icon) override;
    bool askYesNo(QWidget* parent, const QString& text, const QString& title, Icon icon) override;
    bool askOkCancel(QWidget* parent, const QString& text, const QString& title,
                     Icon icon) override;
    Answer ask(QWidget* parent, const Question& question) override;
    std::optional<LogIn> askLogIn(QWidget* parent, const LogInQuestion& question) override;
    QString saveFileName(QWidget* parent, const SaveRequest& request) override;
    QString saveFileAs(QWidget* parent, const QString& title, const QString& path) override;
};
