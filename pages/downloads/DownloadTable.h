#pragma once

#include <QAbstractTableModel>
#include <QList>

#include <functional>
#include <optional>

/// How a download stands. `Asking`: the file is coming, or is there already, but the user has
/// not said yet where it is to be saved.
enum class DownloadState { Asking, Running, Completed, Cancelled, Failed };

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
};

/// Whether it has not ended, so that it can be cancelled.
bool isOpen(const Download& download);

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

    using QAbstractTableModel::QAbstractTableModel;

    /// `cancel` breaks the download off; whoever added it then calls `finish`, at once or later.
    Id add(const Download& download, const std::function<void()>& cancel = {});
    // Downloads that have ended, or are not in the table, do not change any more.
    /// The user wants it as the file `path`; without a path he has to be asked (again).
    void setPlace(Id id, const std::optional<QString>& path);
    /// Both are in bytes; `total` is 0 or less while nobody knows.
    void setProgress(Id id, qint64 received, qint64 total);
    /// It has ended as `state`.
    void finish(Id id, DownloadState state, const QString& failure = {});
    /// Takes a download out of the table, whatever its state.
    void remove(Id id);
    /// Takes those that have ended out of the table.
    void removeFinished();

    const Download& at(int row) const { return m_entries.at(row).download; }
    /// How many have not ended.
    int openCount() const;
    /// Whether a running download is going to be the file `path`.
    bool isTarget(const QString& path) const;
    /// Breaks off the download in the row `row`, or all, unless they have ended.
    void cancel(int row);
    void cancelAll();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    /// The progress is the number of `percentDone`, for a delegate that draws it.
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Entry {
        Id id = 0;
        Download download;
        std::function<void()> cancel;
    };

    QList<Entry>::iterator find(Id id);
    template <typename Change>
    void changeOpen(Id id, Change change);

    QList<Entry> m_entries;
    Id m_lastId = 0;
};
