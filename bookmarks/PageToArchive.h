#pragma once

#include "history/HistoryList.h"

#include <QString>

#include <functional>

class QModelIndex;
class Shell;
class QWidget;
class frmBook;
struct ArchiveParts;
struct DroppedBookmark;

/// Adds a page or a link to the archive, by the dialog of a new bookmark and a choice of the
/// folder. While the archive's window is open this is a change like those made there; else the
/// archive is read and saved at once. Remembers for the run which folder was chosen last.
class PageToArchive {
public:
    /// Both outlive this.
    PageToArchive(Shell& shell, const HistoryCollection& history)
        : m_shell(shell), m_history(history)
    {
    }

    /// Asks the user, above `parent`; `open` is the archive's window, or null. A page or link
    /// without a title gets the one that it had when it was visited, or the end of its address.
    void add(QWidget* parent, frmBook* open, const QString& title, const QString& address);

private:
    void tell(QWidget* parent, const QString& problem);
    void addToClosed(QWidget* parent, const DroppedBookmark& bookmark);
    /// `added` is called when the bookmark is in the archive.
    void ask(QWidget* parent, const ArchiveParts& archive, const DroppedBookmark& bookmark,
             const std::function<void(const QModelIndex& node)>& added);

    Shell& m_shell;
    const HistoryCollection& m_history;
    /// Its file, as the name may change.
    QString m_lastFolder;
};
