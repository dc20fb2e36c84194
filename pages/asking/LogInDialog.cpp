#include "pages/asking/LogInDialog.h"

#include "pages/asking/PageTextLabel.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

QString explanation(const LogInQuestion& question)
{
    const QString failure =
        question.hasFailed ? u"Die Anmeldung ist fehlgeschlagen.\n\n"_s : QString();
    QString text = question.isProxy ? u"Der Proxy-Server %1 verlangt eine Anmeldung."_s
                                    : u"%1 verlangt eine Anmeldung."_s;
    text = text.arg(question.site);
    if (!question.realm.isEmpty())
        text += u"\nBereich: „"_s + question.realm + u"“"_s;
    if (question.isReadable) {
        text +=
            u"\n\nDie Verbindung ist nicht verschlüsselt: Andere können das Kennwort mitlesen."_s;
    }
    return failure + text;
}

} // namespace

LogInDialog::LogInDialog(const LogInQuestion& question, QWidget* parent)
    : QDialog(parent), m_user(new QLineEdit(question.user)), m_password(new QLineEdit),
      m_showPassword(new QCheckBox(u"Kennwort &anzeigen"_s))
{
    setObjectName(u"LogInDialog"_s);
    setWindowTitle(u"Anmeldung"_s);
    auto* const layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    auto* const text = new PageTextLabel(explanation(question), this);
    text->setObjectName(u"lblText"_s);
    layout->addWidget(text->fitted());
    auto* const fields = new QFormLayout;
    layout->addLayout(fields); // now, or its labels would come after all fields
    addFields(*fields, question);

    auto* const buttons = new QDialogButtonBox(this);
    QPushButton* const accept = buttons->addButton(u"Anmelden"_s, QDialogButtonBox::AcceptRole);
    accept->setObjectName(u"cmdAccept"_s);
    accept->setDefault(true);
    buttons->addButton(u"Abbrechen"_s, QDialogButtonBox::RejectRole)->setObjectName(u"cmdRefuse"_s);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

void LogInDialog::addFields(QFormLayout& fields, const LogInQuestion& question)
{
    m_user->setObjectName(u"txtUser"_s);
    m_password->setObjectName(u"txtPassword"_s);
    m_showPassword->setObjectName(u"chkShowPassword"_s);
    fields.addRow(u"&Benutzername:"_s, m_user);
    fields.addRow(u"&Kennwort:"_s, m_password);
    fields.addRow(QString(), m_showPassword);
    showPassword(false);
    connect(m_showPassword, &QCheckBox::toggled, this, &LogInDialog::showPassword);
    (question.user.isEmpty() ? m_user : m_password)->setFocus();
}

void LogInDialog::showPassword(bool isShown)
{
    m_password->setEchoMode(isShown ? QLineEdit::Normal : QLineEdit::Password);
}

LogIn LogInDialog::logIn() const
{
    return {m_user->text(), m_password->text()};
}
