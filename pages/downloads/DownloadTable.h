#pragma once

#include "pages/downloads/RemainingTime.h"

#include <QAbstractTableModel>
#include <QElapsedTimer>
#include <QList>
#include <QTimer>

#include <functional>
#include <optional>

/// How a download stands. `Asking`: the file is coming, or is there already, but the user has
/// not said yet where it is to be saved.
enum class DownloadState { Asking, Running, Completed, Cancelled, Failed };

/// How it came to run, or to ask: for the first time, or once more after it had ended, with
/// what was there already or without.
enum class DownloadStart { First, Continued, Anew };

/// A file that is being fetched, or was.
struct Download {
    /// The file that it is saved as, with its folder; while the user is asked, its name.
    QString path;
    DownloadState state = DownloadState::Running;
    /// In bytes.
    qint64 received = 0;
    /// In bytes; 0 or less while nobody knows.
    qint64 total = 0;
    /// Why it failed, for the user.
    QString failure = {};
    DownloadStart start = DownloadStart::First;
    /// Whether it can be loaded once more when it has ended without success.
    bool canReload = false;
    /// While it is running: whether it can be paused, and is.
    bool canPause = false;
    bool isPaused = false;
    /// Nothing has come for some time, though it is running.
    bool isStalled = false;
    /// How long it still takes, for the user; empty while nobody can tell.
    QString remaining = {};
};

/// What whoever adds a download to the table does about it when the user wants it.
struct DownloadActions {
    /// Breaks it off; calls `finish`, at once or later.
    std::function<void()> cancel = {};
    /// Call `setPaused`.
    std::function<void()> pause = {};
    std::function<void()> goOn = {};
    /// Loads it once more; calls `restart`.
    std::function<void()> reload = {};
    /// It is being taken out of the list, and cannot be loaded once more.
    std::function<void()> forget = {};
};

/// That `count` downloads have not ended, as a German sentence; empty for 0.
QString unfinishedText(int count);

/// Whether it has not ended, so that it can be cancelled.
bool isOpen(const Download& download);
/// What the user can do about it now.
bool canBePaused(const Download& download);
bool canGoOn(const Download& download);
/// One from which nothing comes any more can be begun anew, too.
bool canBeReloaded(const Download& download);

/// "1,2 MB von 3,4 MB", or how much has come if that is all, or if nobody knows how much there
/// is.
QString sizeText(const Download& download);
/// How it stands, in German.
QString stateText(const Download& download);
/// From 0 to 100; -1 while it cannot be told.
int percentDone(const Download& download);
/// The same as a text: "42 %", "unbekannt".
QString progressText(const Download& download);

/// The downloads of this run, oldest first, as a table.
class DownloadTable : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Name, Progress, Size, State, columns };
    /// The number that stands for a download as long as it is in the table; never 0.
    using Id = quint32;

    explicit DownloadTable(QObject* parent = nullptr);

    Id add(const Download& download, const DownloadActions& actions = {});
    // Downloads that have ended, or are not in the table, do not change any more, unless they
    // are started once more.
    /// The user wants it as the file `path`; without a path he has to be asked (again).
    void setPlace(Id id, const std::optional<QString>& path);
    /// Both are in bytes; `total` is 0 or less while nobody knows. 0 bytes are what a request
    /// says that has just been made: they change nothing.
    void setProgress(Id id, qint64 received, qint64 total);
    void setCanPause(Id id, bool canPause);
    void setPaused(Id id, bool isPaused);
    /// It has ended as `state`.
    void finish(Id id, DownloadState state, const QString& failure = {});
    /// It has ended, but runs once more, or asks for its place, as `state` says.
    void restart(Id id, DownloadState state, DownloadStart start);
    /// Takes a download out of the table, whatever its state.
    void remove(Id id);
    /// Takes those that have ended out of the table.
    void removeFinished();

    const Download& at(int row) const { return m_entries.at(row).download; }
    /// Null if it is not in the table.
    const Download* find(Id id) const;
    /// How many have not ended.
    int openCount() const;
    /// Whether a running download is going to be the file `path`.
    bool isTarget(const QString& path) const;
    /// Breaks off the download in the row `row`, or all, unless they have ended.
    void cancel(int row);
    void cancelAll();
    // As the user wants it; nothing happens where it cannot be done.
    void pause(int row);
    void goOn(int row);
    void reload(int row);

    /// Those that have not ended, all together: "2 Downloads, 45 %"; empty if there are none.
    QString summary() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    /// The progress is the number of `percentDone`, for a delegate that draws it.
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Entry {
        Id id = 0;
        Download download;
        DownloadActions actions;
        RemainingTime time = {};
    };

    QList<Entry>::iterator entryOf(Id id);
    void changed(const Entry& entry);
    template <typename Change>
    void changeOpen(Id id, Change change);
    void takeTime();
    /// Once a second while any download is running, and not at all otherwise.
    void setClock();

    QList<Entry> m_entries;
    Id m_lastId = 0;
    QTimer m_clock;
    QElapsedTimer m_sinceClock;
};
