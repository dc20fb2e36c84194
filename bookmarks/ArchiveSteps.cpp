#include "bookmarks/ArchiveSteps.h"

#include "bookmarks/ArchiveFiles.h"

QModelIndex ArchiveSteps::run(Change change)
{
    if (m_open > 0 && !m_begun) {
        m_steps.beginMacro(m_name);
        m_begun = true;
    }
    m_steps.push(change.release());
    if (!m_begun)
        noteChange();
    return m_archive.reached;
}

std::optional<ArchiveSteps::Moved> ArchiveSteps::takeBack()
{
    const QString text = m_steps.undoText();
    if (m_open > 0 || !m_steps.canUndo())
        return {};
    m_steps.undo();
    return moved(text);
}

std::optional<ArchiveSteps::Moved> ArchiveSteps::repeat()
{
    const QString text = m_steps.redoText();
    if (m_open > 0 || !m_steps.canRedo())
        return {};
    m_steps.redo();
    return moved(text);
}

ArchiveSteps::Moved ArchiveSteps::moved(const QString& text)
{
    noteChange();
    return {text, m_archive.reached, m_archive.problem};
}

void ArchiveSteps::clear()
{
    m_steps.clear();
    m_archive.reached = QModelIndex();
    m_cleanMark = m_archive.files.book().IsEdit();
}

void ArchiveSteps::noteSaved(bool whole)
{
    m_cleanMark = false;
    if (whole)
        m_steps.setClean();
    else
        m_steps.resetClean();
}

void ArchiveSteps::noteChange()
{
    markByStep();
    if (m_report)
        m_report();
}

void ArchiveSteps::markByStep()
{
    if (m_archive.isSaved) {
        noteSaved(m_archive.problem.isEmpty());
        return;
    }
    if (!m_steps.isClean())
        return;
    Book& book = m_archive.files.book();
    book.IsEdit(m_cleanMark);
    if (book.colThema())
        for (const auto& folder : *book.colThema())
            folder->IsEdit(false);
}

void ArchiveSteps::begin(const QString& name)
{
    if (m_open++ == 0)
        m_name = name;
}

void ArchiveSteps::end()
{
    if (--m_open > 0 || !m_begun)
        return;
    m_begun = false;
    m_steps.endMacro();
    noteChange();
}
