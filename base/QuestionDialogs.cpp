#include "base/QuestionDialogs.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// `text` with line breaks inside words that are wider than `width`: a label wraps
/// between words only, and a page can make one word of any length.
QString withBrokenWords(const QString& text, const QFontMetrics& metrics, int width)
{
    QString result;
    int used = 0;
    for (const QChar c : text) {
        const int advance = metrics.horizontalAdvance(c);
        if (c.isSpace()) {
            used = 0;
        } else if (used + advance > width && !c.isLowSurrogate()) {
            result += u'\n';
            used = advance;
        } else {
            used += advance;
        }
        result += c;
    }
    return result;
}

/// A label for words of a page: plain, wrapped, and of a width that is easy to read. They
/// can be marked and copied, but links in them cannot be followed.
QLabel* textLabel(const QString& text, QWidget* parent)
{
    constexpr int charactersPerLine = 70;
    auto* const label = new QLabel(parent);
    label->setObjectName(u"lblText"_s);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    const QFontMetrics metrics = label->fontMetrics();
    const int width = metrics.averageCharWidth() * charactersPerLine;
    label->setFixedWidth(width);
    label->setText(withBrokenWords(text, metrics, width));
    label->setMinimumHeight(std::max(0, label->heightForWidth(width)));
    return label;
}

/// The text of a question: a label, or one that can be scrolled where the text is too
/// long for the screen. A text field would wrap and scroll by itself, but assistive
/// tools read out the labels of a dialog that opens, and no fields.
QWidget* textView(const QString& text, QWidget* parent)
{
    constexpr int roomForOthers = 200; // what the dialog has besides, and its borders
    constexpr int least = 100;
    QLabel* const label = textLabel(text, parent);
    const int room = std::max(label->screen()->availableSize().height() - roomForOthers, least);
    if (label->minimumHeight() <= room)
        return label;
    auto* const area = new QScrollArea(parent);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    area->setAccessibleName(label->text());
    area->setWidget(label);
    area->setFixedSize(label->width() + area->verticalScrollBar()->sizeHint().width(), room);
    return area;
}

QString explanation(const Prompt::LogInQuestion& question)
{
    const QString failure =
        question.hasFailed ? u"Die Anmeldung ist fehlgeschlagen.\n\n"_s : QString();
    QString text = question.isProxy ? u"Der Proxy-Server %1 verlangt eine Anmeldung."_s
                                    : u"%1 verlangt eine Anmeldung."_s;
    text = text.arg(question.site);
    if (!question.realm.isEmpty())
        text += u"\nBereich: „"_s + question.realm + u"“"_s;
    if (question.isUnencrypted) {
        text +=
            u"\n\nDie Verbindung ist nicht verschlüsselt: Andere können das Kennwort mitlesen."_s;
    }
    return failure + text;
}

} // namespace

QuestionDialog::QuestionDialog(const Prompt::Question& question, QWidget* parent) : QDialog(parent)
{
    setObjectName(u"QuestionDialog"_s);
    setWindowTitle(question.title);
    auto* const layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(textView(question.text, this));
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

void QuestionDialog::addButtons(const Prompt::Question& question)
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

LogInDialog::LogInDialog(const Prompt::LogInQuestion& question, QWidget* parent)
    : QDialog(parent), m_user(new QLineEdit(question.user)), m_password(new QLineEdit),
      m_showPassword(new QCheckBox(u"Kennwort &anzeigen"_s))
{
    setObjectName(u"LogInDialog"_s);
    setWindowTitle(u"Anmeldung"_s);
    auto* const layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(textView(explanation(question), this));
    auto* const fields = new QFormLayout;
    // Before its rows are added: otherwise all fields would become children of the dialog
    // before their labels, and assistive tools tell of children in that order.
    layout->addLayout(fields);
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

void LogInDialog::addFields(QFormLayout& fields, const Prompt::LogInQuestion& question)
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

Prompt::LogIn LogInDialog::logIn() const
{
    return {m_user->text(), m_password->text()};
}
