#pragma once

#include <QString>

#include <functional>

class DownloadTable;
class QWidget;
class Shell;

/// Asks where downloads are to be saved, and knows where they wait until the user has said so.
class DownloadPlace {
public:
    using IsTaken = std::function<bool(const QString& path)>;

    /// All outlive it. `owner` is the window that the questions belong to. Downloads wait in
    /// `spareFolder` where the folder that is proposed cannot take them.
    DownloadPlace(Shell& shell, QWidget* owner, const DownloadTable& table,
                  const QString& spareFolder);

    /// A free place for a file that is to be `name`, in the folder that will be proposed: most
    /// users agree, and then it need not be copied.
    /// `isTaken` knows the places where others wait.
    QString waitingPlace(const QString& name, const IsTaken& isTaken) const;
    /// Asks until there is a folder that can be written to. Empty if the user cancels.
    QString ask(const QString& name);

    /// A free name beside the file `path`, made of its own.
    QString freeBeside(const QString& path) const;

private:
    QString folder() const;
    QString freeIn(const QString& folder, const QString& name, const IsTaken& isTaken) const;
    bool isTarget(const QString& path) const;
    QString obstacle(const QString& path) const;

    Shell& m_shell;
    QWidget* m_owner;
    const DownloadTable& m_table;
    QString m_spareFolder;
    /// Where the last file went.
    QString m_last;
};
