#pragma once

#include "pages/downloads/DownloadTable.h"

#include <QDialog>

#include <functional>

class QPushButton;
class QTableView;
class QUrl;
class Shell;

/// The downloads window: how the downloads of this run stand, with what can be
/// done about those selected. A free window above its owner that deletes itself
/// when it closes; the downloads go on without it.
class frmDownloads : public QDialog {
    Q_OBJECT
public:
    /// Has the desktop open a file or a folder; false if it cannot.
    using Opener = std::function<bool(const QUrl&)>;

    /// `shell` and `table` outlive the window.
    frmDownloads(Shell& shell, QWidget* owner, DownloadTable& table, Opener open);

    /// Shows the window without taking the keyboard away from another one.
    void showQuietly();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void buildControls();
    void buildList();
    void connectControls();
    void followNew(int row);
    void updateButtons();
    /// The rows selected, in their order.
    QList<int> selected() const;
    /// The one download that is selected; nothing if there are none or several.
    const Download* single() const;

    bool isAny(const QList<int>& rows, bool (*holds)(const Download&)) const;
    /// How the button of the pauses stands: it pauses, or lets go on.
    void updatePause(const QList<int>& rows);
    /// Does something about each of the rows selected.
    void forSelected(void (DownloadTable::*action)(int));
    void openFile();
    void showFolder();
    void complain(const QString& text);

    Shell& m_shell;
    DownloadTable& m_table;
    Opener m_open;
    QTableView* m_list = nullptr;
    QPushButton* m_cancel = nullptr;
    QPushButton* m_pause = nullptr;
    QPushButton* m_reload = nullptr;
    QPushButton* m_openFile = nullptr;
    QPushButton* m_showFolder = nullptr;
    QPushButton* m_clear = nullptr;
};
