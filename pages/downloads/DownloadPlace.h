#pragma once

#include <QHash>
#include <QPointer>
#include <QString>

#include <functional>

class DownloadTable;
class QWidget;
class Shell;

/// Where downloads are saved: proposes free places, asks the user, and remembers whose
/// downloads he has refused.
class DownloadPlace {
public:
    using IsTaken = std::function<bool(const QString& path)>;

    /// All outlive it. `owner` is the window that the questions belong to. Downloads wait in
    /// `spareFolder` where the folder that is proposed cannot take them.
    DownloadPlace(Shell& shell, QWidget* owner, const DownloadTable& table,
                  const QString& spareFolder);

    /// A free place where the file that is to be `name` waits for the user's answer. It is in
    /// the folder that will be proposed: most users agree, and then the file need not be copied.
    /// `isTaken` knows the places where others wait.
    QString waitingPlace(const QString& name, const IsTaken& isTaken) const;
    /// Asks where the file `name` that `page` offers is to be saved, until there is a folder
    /// that can be written to. Empty if the user refuses the file, or all files of the page.
    QString ask(const QString& name, const QPointer<const QObject>& page);
    /// A free name beside the file `path`, made of its own.
    QString freeBeside(const QString& path) const;

    /// Whether the user has refused all further downloads of `page`. Null stands for all pages
    /// that have no document.
    bool refusesAll(const QObject* page) const;
    /// Says in the status bar that a download has been refused without a question.
    void reportRefusal();
    /// The user may be asked about downloads of `page` once more.
    void forgetRefusals(const QObject* page) { m_refusals.remove(page); }

private:
    QString proposedFolder() const;
    QString freeIn(const QString& folder, const QString& name, const IsTaken& isTaken) const;
    bool mayAsk(const QObject* page);
    QString askPath(const QString& name);
    QString obstacle(const QString& path) const;

    Shell& m_shell;
    QWidget* m_owner;
    const DownloadTable& m_table;
    QString m_spareFolder;
    QString m_lastFolder;
    /// How many downloads of a page the user has refused since he last agreed to one.
    QHash<const QObject*, int> m_refusals;
};
