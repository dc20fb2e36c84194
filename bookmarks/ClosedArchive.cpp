#include "bookmarks/ClosedArchive.h"

#include "base/Errors.h"

QString ClosedArchive::load()
{
    QString problem = m_editor.load();
    // The default archive is shown from the next load on.
    if (problem.isEmpty() && !m_files.shownFolders())
        m_editor.load();
    if (!m_files.isLoaded())
        throw Error(problem);
    return problem;
}

void ClosedArchive::save()
{
    const QString problem = m_editor.save();
    if (problem.isEmpty())
        return;
    m_tree.build(nullptr);
    m_files.release();
    ignoringErrors([this] { load(); });
    throw Error(problem);
}
