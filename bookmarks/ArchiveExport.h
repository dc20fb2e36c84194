#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

class Book;
class QWidget;
class Shell;
class Thema;

/// The export commands: they ask for a file, write it and offer to show it.
class BookExport {
public:
    /// Shell and window outlive the object.
    BookExport(Shell& shell, QWidget* window) : m_shell(shell), m_window(window) {}

    /// `kind` is "Text", "Netscape", or anything else for plain HTML. Without a
    /// folder nothing happens. Throw FileError.
    void ExportFolder(const QString& kind, const std::shared_ptr<Thema>& folder);
    void ExportArchive(const QString& kind, const Book& book);

private:
    void exportTo(const QString& title, const QString& kind,
                  const std::function<QByteArray()>& content);
    QString askFileName(const QString& title, const QString& kind) const;
    void ShowExportResult(const QString& fileName);

    Shell& m_shell;
    QWidget* m_window;
};
