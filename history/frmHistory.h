#pragma once

#include "history/HistoryFind.h"
#include "history/HistoryTable.h"

#include <QMainWindow>

#include <functional>
#include <memory>

class QContextMenuEvent;
class QKeyEvent;
class QMenu;
class QMouseEvent;
class QTableView;
class Shell;

/// The history window: a snapshot of the visited addresses as a table that is
/// sorted by address, title or date, and from which an address is opened or
/// dragged. A free window above its owner that deletes itself when it closes.
///
/// `bIsOpenHistory` of the frame is true from construction to closing; whoever
/// deletes the window without closing it has to clear the flag.
class frmHistory : public QMainWindow {
    Q_OBJECT
public:
    /// `shell` and `history` outlive the window.
    frmHistory(Shell& shell, const HistoryCollection& history, QWidget* owner);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void buildControls();
    void buildGrid();
    void buildMenus();
    void addCommand(QMenu* menu, const QString& name, const QString& caption,
                    const std::function<void()>& command);
    QSize firstSize() const;

    void FillGrid();
    void SizeGrid();
    /// `spareRows` counts rows as if the table had that many more.
    void SizeColumns(int spareRows = 0);
    void setWidths(const HistoryWidths& twips);
    void sortBy(HistoryColumn column);
    /// The selected row from 0, or -1 while the header is the current row.
    int currentRow() const;

    bool mousePressed(const QMouseEvent& event, QPoint inGrid);
    void gridDoubleClicked();
    bool gridKeyPressed(const QKeyEvent& event);
    bool rowReached(const QKeyEvent& event);
    void contextMenuWanted(const QContextMenuEvent& event);

    Shell& m_shell;
    const HistoryCollection& m_history;
    HistoryTable m_table;
    QWidget* m_client = nullptr;
    QTableView* m_grid = nullptr;
    QMenu* m_menu = nullptr;
    std::unique_ptr<HistoryFind> m_find;
    FindLine* m_findLine = nullptr;
    /// The last press was on the header: a double-click opens nothing.
    bool m_headerClick = false;
};
