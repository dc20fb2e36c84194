#pragma once

#include <QAbstractTableModel>
#include <QList>

#include <functional>
#include <optional>

/// `Asking`: the file is coming, or is there already, but the user has not said yet where it
/// is to be saved.
enum class DownloadState { Asking, Running, Completed, Cancelled, Failed };

/// A file that is being fetched, or was.
struct Download {
    /// The file that it is saved as, with its folder; while the user is asked, its name.
    QString path;
    DownloadState state = DownloadState::Running;
    /// In bytes.
    qint64 received = 0;
    /// In bytes; not above 0 while nobody knows.
    qint64 total = 0;
    /// Why it failed, for the user.
    QString failure = {};
};

/// Whether it can still be broken off.
bool isOpen(const Download& download);

/// "3,4 MB": decimal, at most one decimal place, in German.
QString sizeText(qint64 bytes);
/// "1,2 MB von 3,4 MB", or what there is to say.
QString sizeText(const Download& download);
/// How it stands, in German.
QString stateText(const Download& download);
/// From 0 to 100; -1 while it cannot be told.
int percentDone(const Download& download);

/// The same in words: "42 %".
QString progressText(const Download& download);

/// The downloads of this run, oldest first, as a table.
class DownloadTable : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Name, Progress, Size, State, columns };
    /// The number that stands for a download as long as it is in the table.
    using Id = quint32;

    using QAbstractTableModel::QAbstractTableModel;

    /// `cancel` breaks it off, whereupon `finish` is called, at once or later.
    Id add(const Download& download, const std::function<void()>& cancel = {});
    /// It is going to be the file `path`; nothing: the user is asked once more.
    void decide(Id id, const std::optional<QString>& path);
    void progress(Id id, qint64 received, qint64 total);
    /// It has ended as `state`; what has ended once stays as it is.
    void finish(Id id, DownloadState state, const QString& failure = {});
    /// The user does not want it.
    void remove(Id id);
    /// Takes those that have ended out of the table.
    void removeFinished();

    const Download& at(int row) const { return m_entries.at(row).download; }
    /// How many have not ended.
    int running() const;
    /// Whether a running download is going to be the file `path`.
    bool isTarget(const QString& path) const;
    void cancel(int row);
    void cancelAll();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    /// The progress is a percentage as the number it is, for whoever draws it.
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Entry {
        Id id = 0;
        Download download;
        std::function<void()> cancel;
    };

    QList<Entry>::iterator find(Id id);
    Download* running(Id id);
    void changed(const Download* download);

    QList<Entry> m_entries;
    Id m_lastId = 0;
};
