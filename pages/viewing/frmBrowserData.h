#pragma once

#include <QDialog>

class QCheckBox;
class QPushButton;
class QVBoxLayout;

/// What is to be forgotten of the pages visited.
struct BrowserData {
    bool cookies = false;
    bool cache = false;
    bool visitedLinks = false;
    /// Answers to what pages have asked for.
    bool permissions = false;
    /// Local storage, databases and the like, which go at the next start.
    bool storage = false;
};

/// The dialog that asks which browsing data are to be deleted. Shown with
/// exec(); accepted, `chosen` is to be deleted by the caller.
class frmBrowserData : public QDialog {
    Q_OBJECT
public:
    explicit frmBrowserData(QWidget* parent);

    BrowserData chosen() const;

private:
    QCheckBox* addCheck(QVBoxLayout& layout, const QString& name, const QString& caption,
                        const QString& toolTip);
    void addButtons(QVBoxLayout& layout);
    void setKeys();
    void updateButtons();
    QList<QCheckBox*> checks() const;

    QCheckBox* m_cookies = nullptr;
    QCheckBox* m_cache = nullptr;
    QCheckBox* m_visitedLinks = nullptr;
    QCheckBox* m_permissions = nullptr;
    QCheckBox* m_storage = nullptr;
    QPushButton* m_delete = nullptr;
    QPushButton* m_quit = nullptr;
};
