#pragma once

#include <QDialog>

class QCheckBox;
class QPushButton;
class QVBoxLayout;

/// What is to be deleted of the data that pages have left.
struct BrowserData {
    bool cookies = false;
    bool cache = false;
    bool visitedLinks = false;
    /// The user's answers to what pages have asked for.
    bool permissions = false;
    /// Local storage, databases and the like, which are removed at the next start.
    bool storage = false;
};

/// The dialog that asks which browsing data are to be deleted. It deletes nothing itself: if
/// exec() says that it was accepted, the caller deletes what is `chosen`.
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
