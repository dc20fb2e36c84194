#pragma once

#include <QDialog>

class Shell;

/// The about box: icon, title and the maker's lines. It deletes itself when it
/// loses the focus or on Escape.
class frmAbout : public QDialog {
    Q_OBJECT
public:
    frmAbout(const Shell& shell, QWidget* owner);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void buildControls(const Shell& shell);
};
