#pragma once

#include "bookmarks/ImportPlan.h"

#include <QDialog>

#include <functional>

class Prompt;
class QLabel;
class QPlainTextEdit;
class QPushButton;

/// Shows what an import would do, does it when the user agrees, and says then what it has done.
class frmImport : public QDialog {
    Q_OBJECT
public:
    /// `take` does the import, or throws Error. All outlive the dialog.
    frmImport(const ImportPlan& plan, const std::function<void()>& take, Prompt& prompt,
              QWidget* parent);

private:
    void buildControls();
    void setKeys();
    void takeAll();
    void copyList() const;
    void showText(const QString& text);

    const ImportPlan& m_plan;
    std::function<void()> m_take;
    Prompt& m_prompt;
    QLabel* m_text;
    QPlainTextEdit* m_list;
    QPushButton* m_ok;
    QPushButton* m_copy;
    QPushButton* m_close;
};
