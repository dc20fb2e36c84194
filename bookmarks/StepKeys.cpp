#include "bookmarks/StepKeys.h"

#include "base/RunCommand.h"
#include "bookmarks/ArchiveStatus.h"
#include "bookmarks/ArchiveView.h"
#include "bookmarks/CommandRunner.h"

using namespace Qt::StringLiterals;

StepKeys::StepKeys(ArchiveSteps& steps, CommandRunner& runner, ArchiveView& view,
                   ArchiveStatus& status)
    : QObject(&view), m_steps(steps), m_runner(runner), m_view(view), m_status(status)
{
    connect(&view, &ArchiveView::takeBackPressed, this,
            [this] { m_runner.run([this] { takeBack(); }); });
    connect(&view, &ArchiveView::repeatPressed, this,
            [this] { m_runner.run([this] { repeat(); }); });
}

void StepKeys::takeBack()
{
    const auto moved = move(&ArchiveSteps::takeBack);
    if (moved)
        show(*moved, u"Zurückgenommen: "_s);
    else
        m_status.showText(u"Es gibt nichts zurückzunehmen."_s);
}

void StepKeys::repeat()
{
    const auto moved = move(&ArchiveSteps::repeat);
    if (moved)
        show(*moved, u"Wiederholt: "_s);
    else
        m_status.showText(u"Es gibt nichts zu wiederholen."_s);
}

StepKeys::Moved StepKeys::move(Moved (ArchiveSteps::*how)())
{
    const WaitPointer wait(m_view.window());
    return (m_steps.*how)();
}

void StepKeys::show(const ArchiveSteps::Moved& moved, const QString& done)
{
    m_view.reachNode(moved.node);
    m_status.showText(done + moved.text);
    m_runner.tell(moved.problem);
}
