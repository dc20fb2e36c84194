#pragma once

#include "pages/asking/PageAsker.h"

#include <QDialog>

class QCheckBox;
class QFormLayout;
class QLineEdit;

/// Asks for the user name and the password that a site or a proxy wants.
class LogInDialog : public QDialog {
    Q_OBJECT
public:
    LogInDialog(const LogInQuestion& question, QWidget* parent);

    LogIn logIn() const;

private:
    void addFields(QFormLayout& fields, const LogInQuestion& question);
    void showPassword(bool isShown);

    QLineEdit* m_user;
    QLineEdit* m_password;
    QCheckBox* m_showPassword;
};
