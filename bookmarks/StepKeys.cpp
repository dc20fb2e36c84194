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
    connect(&view, &ArchiveView::takeBackPressed, this, [this] {
        step(&ArchiveSteps::takeBack, u"Zurückgenommen: "_s, u"Es gibt nichts zurückzunehmen."_s);
    });
    connect(&view, &ArchiveView::repeatPressed, this, [this] {
        step(&ArchiveSteps::repeat, u"Wiederholt: "_s, u"Es gibt nichts zu wiederholen."_s);
    });
}

void StepKeys::step(Moved (ArchiveSteps::*how)(), const QString& done, const QString& nothing)
{
    m_runner.run([&, this] {
        const Moved moved = move(how);
        if (!moved) {
            m_status.showText(nothing);
            return;
        }
        m_view.reachNode(moved->node);
        m_status.showText(done + moved->text);
        m_runner.tell(moved->problem);
    });
}

StepKeys::Moved StepKeys::move(Moved (ArchiveSteps::*how)())
{
    const WaitPointer wait(m_view.window());
    return (m_steps.*how)();
}
