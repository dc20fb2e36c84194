#include "base/QuestionDialogs.h"

#include "pages/asking/PageTextLabel.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

QuestionDialog::QuestionDialog(const PageQuestion& question, QWidget* parent) : QDialog(parent)
{
    setObjectName(u"QuestionDialog"_s);
    setWindowTitle(question.title);
    auto* const layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    auto* const text = new PageTextLabel(question.text, this);
    text->setObjectName(u"lblText"_s);
    layout->addWidget(text->fitted());
    if (question.input) {
        m_input = new QLineEdit(*question.input, this);
        m_input->setObjectName(u"txtInput"_s);
        m_input->setAccessibleName(u"Antwort"_s);
        m_input->selectAll();
        layout->addWidget(m_input);
    }
    if (!question.checkBox.isEmpty()) {
        m_checkBox = new QCheckBox(question.checkBox, this);
        m_checkBox->setObjectName(u"chkFurther"_s);
        layout->addWidget(m_checkBox);
    }
    addButtons(question);
}

void QuestionDialog::addButtons(const PageQuestion& question)
{
    auto* const buttons = new QDialogButtonBox(this);
    QPushButton* const accept = buttons->addButton(question.accept, QDialogButtonBox::AcceptRole);
    accept->setObjectName(u"cmdAccept"_s);
    QPushButton* first = accept;
    if (!question.refuse.isEmpty()) {
        QPushButton* const refuse =
            buttons->addButton(question.refuse, QDialogButtonBox::RejectRole);
        refuse->setObjectName(u"cmdRefuse"_s);
        if (question.isRisky)
            first = refuse;
    }
    first->setDefault(true);
    (m_input != nullptr ? static_cast<QWidget*>(m_input) : first)->setFocus();
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout()->addWidget(buttons);
}

bool QuestionDialog::isChecked() const
{
    return m_checkBox != nullptr && m_checkBox->isChecked();
}

QString QuestionDialog::input() const
{
    return m_input != nullptr ? m_input->text() : QString();
}
