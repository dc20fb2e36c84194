#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

class ArchiveFiles;
class QWidget;
class Shell;
class Thema;

/// The export commands: they ask for a file, write it and offer to show it.
class ArchiveExport {
public:
    /// All three outlive the object.
    ArchiveExport(ArchiveFiles& files, Shell& shell, QWidget* window)
        : m_files(files), m_shell(shell), m_window(window)
    {
    }

    /// `kind` is "Text", "Netscape", or anything else for plain HTML. Without a folder
    /// nothing is written. Both throw Error when the archive could not be read or the
    /// file cannot be written.
    void ExportFolder(const QString& kind, const std::shared_ptr<Thema>& folder);
    void ExportArchive(const QString& kind);

private:
    void exportTo(const QString& title, const QString& kind,
                  const std::function<QByteArray()>& content);
    QString askFileName(const QString& title, const QString& kind) const;
    void ShowExportResult(const QString& fileName);

    ArchiveFiles& m_files;
    Shell& m_shell;
    QWidget* m_window;
};
