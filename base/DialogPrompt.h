#pragma once

#include "base/Prompt.h"

/// Prompt with real message boxes and the toolkit's own save dialog.
class MessagePrompt : public Prompt {
public:
    void tell(QWidget* parent, const QString& text, const QString& title, Icon icon) override;
    bool askYesNo(QWidget* parent, const QString& text, const QString& title, Icon icon) override;
    bool askOkCancel(QWidget* parent, const QString& text, const QString& title,
                     Icon icon) override;
    QString saveFileName(QWidget* parent, const SaveRequest& request) override;
    QString saveFileAs(QWidget* parent, const QString& title, const QString& path) override;
};
