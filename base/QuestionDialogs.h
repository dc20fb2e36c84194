#pragma once

#include "base/Prompt.h"

#include <QDialog>

class QCheckBox;
class QFormLayout;
class QLineEdit;

/// The window of one `Prompt::Question`. Escape and the close box refuse.
class QuestionDialog : public QDialog {
    Q_OBJECT
public:
    QuestionDialog(const Prompt::Question& question, QWidget* parent);

    bool isChecked() const;
    QString input() const;

private:
    void addButtons(const Prompt::Question& question);

    QCheckBox* m_checkBox = nullptr;
    QLineEdit* m_input = nullptr;
};

/// Asks for the user name and the password that a site or a proxy wants.
class LogInDialog : public QDialog {
    Q_OBJECT
public:
    LogInDialog(const Prompt::LogInQuestion& question, QWidget* parent);

    Prompt::LogIn logIn() const;

private:
    void addFields(QFormLayout& fields, const Prompt::LogInQuestion& question);
    void showPassword(bool isShown);

    QLineEdit* m_user;
    QLineEdit* m_password;
    QCheckBox* m_showPassword;
};
