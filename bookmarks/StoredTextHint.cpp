#include "bookmarks/StoredTextHint.h"

#include "bookmarks/StoredText.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

StoredTextHint::StoredTextHint(QWidget* field, qsizetype width, Text text)
    : m_field(field), m_width(width), m_text(std::move(text))
{
    setObjectName(field->objectName() + u"Hint"_s);
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    hide();
}

QWidget* StoredTextHint::under(QLineEdit* field, qsizetype width)
{
    auto* const hint = new StoredTextHint(field, width, [field] { return field->text(); });
    connect(field, &QLineEdit::textChanged, hint, &StoredTextHint::showLosses);
    return joined(field, hint);
}

QWidget* StoredTextHint::under(QPlainTextEdit* field, qsizetype width)
{
    auto* const hint = new StoredTextHint(
        field, width, [field] { return field->toPlainText().replace(u'\n', u"\r\n"_s); });
    connect(field, &QPlainTextEdit::textChanged, hint, &StoredTextHint::showLosses);
    return joined(field, hint);
}

QWidget* StoredTextHint::joined(QWidget* field, StoredTextHint* hint)
{
    auto* const both = new QWidget;
    auto* const column = new QVBoxLayout(both);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(1);
    column->addWidget(field, 1);
    column->addWidget(hint);
    return both;
}

void StoredTextHint::showLosses()
{
    const QString losses = lossesOf(m_text(), m_width);
    setText(losses);
    setVisible(!losses.isEmpty());
    m_field->setAccessibleDescription(losses);
}
