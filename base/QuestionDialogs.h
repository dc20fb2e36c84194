#pragma once

#include "pages/asking/PageAsker.h"

#include <QDialog>

class QCheckBox;
class QLineEdit;

/// The window of one question or message of a page. Escape and the close box
/// refuse.
class QuestionDialog : public QDialog {
    Q_OBJECT
public:
    QuestionDialog(const PageQuestion& question, QWidget* parent);

    bool isChecked() const;
    QString input() const;

private:
    void addButtons(const PageQuestion& question);

    QCheckBox* m_checkBox = nullptr;
    QLineEdit* m_input = nullptr;
};
