#include "app/ActiveChild.h"

#include "browser/BrowserLayout.h"
#include "browser/frmBrowser.h"

#include <QMdiArea>
#include <QTimer>

#include <algorithm>

ActiveChild::ActiveChild(QMdiArea& area) : QObject(&area), m_area(area) {}

void ActiveChild::watch(QMdiSubWindow& window)
{
    connect(&window, &QMdiSubWindow::windowStateChanged, this,
            [this, &window](Qt::WindowStates before, Qt::WindowStates now) {
                if (!(now & ~before & Qt::WindowMinimized))
                    return;
                // The window is not done with its change of state yet.
                QTimer::singleShot(0, &window, [this, &window] {
                    QMdiSubWindow* const next = usedBefore(window);
                    const bool isActive = m_area.currentSubWindow() == &window;
                    if (isActive && window.isMinimized() && next != nullptr)
                        m_area.setActiveSubWindow(next);
                });
            });
}

void ActiveChild::choose(QMdiSubWindow& window)
{
    if (window.isMinimized())
        window.showNormal();
    m_area.setActiveSubWindow(&window);
    if (!window.isMaximized())
        window.setGeometry(withinReach(window.geometry(), m_area.viewport()->size()));
}

void ActiveChild::chooseNext()
{
    chooseBeside(1);
}

void ActiveChild::choosePrevious()
{
    chooseBeside(-1);
}

void ActiveChild::chooseBeside(int step)
{
    const QList<QMdiSubWindow*> all = m_area.subWindowList(QMdiArea::CreationOrder);
    const qsizetype place = all.indexOf(m_area.currentSubWindow());
    if (!all.isEmpty())
        choose(*all[(place + step + all.size()) % all.size()]);
}

void ActiveChild::replace(const frmBrowser& closing)
{
    if (m_area.currentSubWindow() != &closing)
        return;
    QMdiSubWindow* next = closing.opener();
    if (next == nullptr || !canBeSeen(*next))
        next = usedBefore(closing);
    if (next != nullptr)
        m_area.setActiveSubWindow(next);
}

QMdiSubWindow* ActiveChild::usedBefore(const QMdiSubWindow& window) const
{
    const QList<QMdiSubWindow*> used = m_area.subWindowList(QMdiArea::ActivationHistoryOrder);
    const auto found = std::find_if(used.rbegin(), used.rend(), [&](const QMdiSubWindow* other) {
        return other != &window && canBeSeen(*other);
    });
    return found != used.rend() ? *found : nullptr;
}

bool ActiveChild::canBeSeen(const QMdiSubWindow& window)
{
    return !window.isHidden() && !window.isMinimized();
}
