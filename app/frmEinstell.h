#pragma once

#include <QDialog>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLineEdit;
class QPushButton;
class Shell;

/// The preferences dialog. It fills its fields once, when it is made, and is
/// shown with exec(). Drops are the opener's business.
///
/// What "OK" has taken over before it fails stays in force for this run.
class frmEinstell : public QDialog {
    Q_OBJECT
public:
    frmEinstell(Shell& shell, QWidget* parent);

private:
    void buildControls();
    void addTexts(QGridLayout& grid);
    void addChecks(QGridLayout& grid);
    void setKeys();
    void setTabs();

    void Form_Load();
    void showHistoryRows(qint16 rows);
    /// Throws Error for what is no number, or none that is stored.
    qint16 typedHistoryRows() const;
    void Save_Click();
    void Quit_Click();
    void Standard_Click();
    void Command2_Click();

    Shell& m_shell;
    QLineEdit* m_text1 = nullptr; ///< the start address
    QLineEdit* m_text2 = nullptr; ///< the search engine
    QLineEdit* m_text3 = nullptr; ///< the e-mail application
    QPushButton* m_command2 = nullptr;
    QComboBox* m_combo1 = nullptr;
    QCheckBox* m_check1 = nullptr; ///< status bar
    QCheckBox* m_check2 = nullptr; ///< browser window after the start
    QCheckBox* m_check3 = nullptr; ///< address bar
    QCheckBox* m_check4 = nullptr; ///< toolbar
    QPushButton* m_standard = nullptr;
    QPushButton* m_save = nullptr;
    QPushButton* m_quit = nullptr;
};
