#pragma once

#include <QLabel>

#include <functional>

class QLineEdit;
class QPlainTextEdit;

/// A quiet line under a field of the dialog that tells, while the user types, what of the text
/// the archive's files will not keep. It is there only when something is lost; assistive tools
/// read it as the field's description.
class StoredTextHint : public QLabel {
    Q_OBJECT
public:
    /// The field with its hint below it, as one widget for the dialog's layout. `width` is that
    /// of the file's field, in bytes.
    static QWidget* under(QLineEdit* field, qsizetype width);
    static QWidget* under(QPlainTextEdit* field, qsizetype width);

private:
    using Text = std::function<QString()>;

    StoredTextHint(QWidget* field, qsizetype width, Text text);
    static QWidget* joined(QWidget* field, StoredTextHint* hint);
    void showLosses();

    QWidget* m_field;
    qsizetype m_width;
    Text m_text;
};
