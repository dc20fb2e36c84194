#pragma once

#include "bookmarks/ArchiveEditor.h"
#include "bookmarks/ArchiveTree.h"
#include "bookmarks/ChosenFolder.h"

/// The archive while no window shows it: read, changed and saved at once.
class ClosedArchive {
public:
    /// As those of `ArchiveFiles`.
    explicit ClosedArchive(const QString& programFolder, const QString& dataFolder = {})
        : m_files(programFolder, dataFolder), m_editor(m_files, m_tree)
    {
    }

    /// Reads the archive, of a new user the default one that it makes. Returns what the user
    /// has to be told all the same. Throws Error when the archive could not be read.
    QString load();
    /// Writes the changes. Throws Error when that fails: then they are dropped, and the archive
    /// is read anew, as far as that is possible.
    void save();
    ArchiveParts parts() { return {m_files, m_tree, m_editor}; }

private:
    ArchiveFiles m_files;
    ArchiveTree m_tree;
    ArchiveEditor m_editor;
};
