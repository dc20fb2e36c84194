#include "app/ClosedWindows.h"

#include "app/MDIForm1.h"
#include "base/RunCommand.h"

namespace {
constexpr qsizetype mostKept = 20;
} // namespace

ClosedWindows::ClosedWindows(MDIForm1& frame) : QObject(&frame), m_frame(frame)
{
    connect(&frame, &MDIForm1::browserClosing, this, &ClosedWindows::note);
}

void ClosedWindows::note(const frmBrowser& window)
{
    if (window.isPrivate())
        return;
    Closed closed{window.address(), window.pages()};
    if (closed.address.isEmpty() && closed.pages.isEmpty())
        return;
    m_closed.append(std::move(closed));
    if (m_closed.size() > mostKept)
        m_closed.removeFirst();
}

void ClosedWindows::reopenLast()
{
    if (m_closed.isEmpty())
        return;
    runCommand(m_frame, &m_frame, [this] {
        const Closed& last = m_closed.constLast();
        const frmBrowser* const window = m_frame.addBrowser(nullptr, [&](frmBrowser& created) {
            created.StartingAddress(last.address);
            created.beginWith(last.pages);
        });
        if (window != nullptr) // else there was no room for it, and it waits on
            m_closed.removeLast();
    });
}
