#pragma once

class ArchiveEditor;
class ArchiveFiles;
class ArchiveView;
class QWidget;
class Shell;
struct BookmarkFile;
struct ImportPlan;

/// Takes the bookmarks of a file into the archive, behind its last folder, if the user agrees:
/// as one step, marked changed, not saved.
class ArchiveImport {
public:
    /// All outlive this. `window` is the archive's.
    ArchiveImport(ArchiveFiles& files, ArchiveEditor& editor, ArchiveView& view, Shell& shell,
                  QWidget* window)
        : m_files(files), m_editor(editor), m_view(view), m_shell(shell), m_window(window)
    {
    }

    /// Throws Error where the archive could not be read.
    void ask(const BookmarkFile& file);

private:
    void loadIfUnseen();
    void take(const ImportPlan& plan);

    ArchiveFiles& m_files;
    ArchiveEditor& m_editor;
    ArchiveView& m_view;
    Shell& m_shell;
    QWidget* m_window;
};
