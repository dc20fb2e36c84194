#include "pages/asking/PageDialogs.h"

#include "base/QuestionDialogs.h"
#include "pages/asking/LogInDialog.h"

#include <QPointer>

#include <memory>

PageAnswer PageDialogs::ask(QWidget* parent, const PageQuestion& question)
{
    const QPointer<QuestionDialog> dialog = new QuestionDialog(question, parent);
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (!dialog) // gone with its window
        return {};
    const std::unique_ptr<QuestionDialog> finished(dialog);
    return {isAccepted, finished->isChecked(), finished->input()};
}

std::optional<LogIn> PageDialogs::logIn(QWidget* parent, const LogInQuestion& question)
{
    const QPointer<LogInDialog> dialog = new LogInDialog(question, parent);
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return std::nullopt;
    const std::unique_ptr<LogInDialog> finished(dialog);
    return isAccepted ? std::optional(finished->logIn()) : std::nullopt;
}
