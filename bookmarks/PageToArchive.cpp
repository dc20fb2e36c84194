#include "bookmarks/PageToArchive.h"

#include "base/DroppedAddress.h"
#include "base/RunCommand.h"
#include "base/Shell.h"
#include "bookmarks/ClosedArchive.h"
#include "bookmarks/DroppedBookmark.h"
#include "bookmarks/frmBMProperty.h"
#include "bookmarks/frmBook.h"

#include <QIcon>

using namespace Qt::StringLiterals;

void PageToArchive::add(QWidget* parent, frmBook* open, const QString& title,
                        const QString& address)
{
    const DroppedBookmark dropped = droppedBookmark({address, {}}, m_history);
    const QString name = title.trimmed().isEmpty() ? dropped.title : title;
    if (open == nullptr)
        runCommand(m_shell, parent, [&] { addToClosed(parent, {name, dropped.url}); });
    else
        open->changeFromOutside([&](const ArchiveParts& archive) {
            ask(parent, archive, {name, dropped.url},
                [open](const QModelIndex& node) { open->showAdded(node); });
        });
}

void PageToArchive::addToClosed(QWidget* parent, const DroppedBookmark& bookmark)
{
    ClosedArchive archive(m_shell.programFolder(), m_shell.dataFolder());
    ArchiveFiles& files = archive.parts().files;
    QString problem;
    {
        const WaitPointer wait(parent);
        problem = archive.load();
    }
    tell(parent, problem);
    files.checkReadable();
    ask(parent, archive.parts(), bookmark, [&archive](const QModelIndex&) { archive.save(); });
    tell(parent, files.takeCopyProblem());
}

void PageToArchive::tell(QWidget* parent, const QString& problem)
{
    if (problem.isEmpty())
        return;
    const DropsDisabled guard(m_shell);
    m_shell.prompt().tell(parent, problem, u"Meldung"_s, Prompt::Icon::Exclamation);
}

void PageToArchive::ask(QWidget* parent, const ArchiveParts& archive,
                        const DroppedBookmark& bookmark,
                        const std::function<void(const QModelIndex&)>& added)
{
    ChosenFolder place(archive, added);
    {
        const DropsDisabled guard(m_shell);
        frmBMProperty dialog(place, m_shell.prompt(), m_shell.frameIcon(), parent);
        dialog.bNewBkm(true);
        dialog.offerFolders(place, m_lastFolder);
        Bookmark filled;
        filled.Titel(bookmark.title);
        filled.Url(bookmark.url);
        dialog.TakeBookmark(filled);
        if (dialog.exec() != QDialog::Accepted)
            return;
    }
    m_lastFolder = place.fileName();
    m_shell.statusText(addedText(place.name()));
}
