#pragma once

#include <QStringList>
#include <QToolBar>

class QMenu;
class QProgressBar;

/// The toolbar `tbToolBar` of a browser window: eight buttons with fixed keys
/// (their object names), the drive menu on one of them, and the progress bar.
class BrowserToolbar : public QToolBar {
    Q_OBJECT
public:
    explicit BrowserToolbar(QWidget* parent);

    /// Fills the drive menu: the entries in upper case, "-" between each two.
    void fillDrives(const QStringList& entries);
    void homeToolTip(const QString& text);
    void searchToolTip(const QString& text);
    /// Shows or hides the busy sign and the progress bar.
    void showBusy(bool busy);
    QProgressBar* progressBar() const { return m_progress; }

signals:
    /// A button was clicked, named by its key.
    void buttonClicked(const QString& key);
    /// An entry of the drive menu was clicked.
    void driveClicked(const QString& entry);

protected:
    void changeEvent(QEvent* event) override;

private:
    /// The pictures grow with the letters.
    void fitIcons();
    QAction* addButton(const QString& key, const QString& icon, const QString& toolTip);
    void addDriveButton();

    QAction* m_home = nullptr;
    QAction* m_search = nullptr;
    QMenu* m_drives = nullptr;
    QAction* m_sep = nullptr;
    QProgressBar* m_progress = nullptr;
    QAction* m_progressAction = nullptr;
};
