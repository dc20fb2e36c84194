#include "pages/viewing/CrashOverlay.h"

#include "base/DialogKeys.h"
#include "pages/viewing/OverlayPlacer.h"

#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

#include <sys/wait.h>

using namespace Qt::StringLiterals;

namespace {

QString reasonText(int processStatus)
{
    const QString what = u"Der Prozess der Seite wurde unerwartet beendet (%1)."_s;
    return what.arg(WIFSIGNALED(processStatus) ? u"Signal %1"_s.arg(WTERMSIG(processStatus))
                                               : u"Code %1"_s.arg(WEXITSTATUS(processStatus)));
}

} // namespace

CrashOverlay::CrashOverlay(QWidget* view)
    : QFrame(OverlayPlacer::parentFor(view)), m_view(view), m_headline(new QLabel(this)),
      m_reason(new QLabel(this)), m_reload(new QPushButton(u"&Neu laden"_s, this))
{
    setObjectName(u"CrashOverlay"_s);
    setAutoFillBackground(true);
    QFont large = m_headline->font();
    large.setPointSizeF(large.pointSizeF() * 1.4);
    m_headline->setFont(large);
    m_headline->setWordWrap(true);
    m_reason->setObjectName(u"lblReason"_s);
    m_reason->setWordWrap(true);
    m_reload->setObjectName(u"cmdReload"_s);
    m_reload->setToolTip(u"Lädt die Seite noch einmal"_s);
    auto* const layout = new QVBoxLayout(this);
    layout->addStretch(1);
    for (QLabel* const label : {m_headline, m_reason}) {
        label->setAlignment(Qt::AlignCenter);
        layout->addWidget(label);
    }
    layout->addWidget(m_reload, 0, Qt::AlignCenter);
    layout->addStretch(2);
    connect(m_reload, &QPushButton::clicked, this, &CrashOverlay::reloadWanted);
    // Outside of dialogs a button is pressed by the space bar only.
    (new DialogKeys(this))->set(m_reload, [this] { m_reload->click(); }, {});
    hide();
    view->installEventFilter(this);
    new OverlayPlacer(view, this, [this](const QRect& area) { setGeometry(area); });
}

bool CrashOverlay::eventFilter(QObject* watched, QEvent* event)
{
    // The view has nothing left to show that could take keys.
    if (watched == m_view && event->type() == QEvent::FocusIn && isVisible())
        m_reload->setFocus();
    return QFrame::eventFilter(watched, event);
}

void CrashOverlay::appear(int processStatus)
{
    const bool isExpected = std::exchange(m_isEndExpected, false);
    m_headline->setText(isExpected ? u"Die Anzeige dieser Seite ist beendet."_s
                                   : u"Die Anzeige dieser Seite ist abgestürzt."_s);
    const QString reason = isExpected ? u"Ihr Prozess antwortete nicht; Sie haben ihn beendet."_s
                                      : reasonText(processStatus);
    m_reason->setText(reason);
    m_reload->setAccessibleDescription(m_headline->text() + u' ' + reason);
    const bool hadFocus = isFocusUnder();
    // The widget of the page is of no use any more; the engine sets the next one itself.
    m_view->setFocusProxy(nullptr);
    show();
    raise();
    if (hadFocus)
        m_reload->setFocus();
}

void CrashOverlay::vanish()
{
    const QWidget* const focus = window()->focusWidget();
    const bool hadFocus = focus == m_view || isAncestorOf(focus);
    hide();
    if (hadFocus)
        m_view->setFocus();
}

/// Whether the focus is in the page, or in something else that lies over it.
bool CrashOverlay::isFocusUnder() const
{
    const QWidget* const focus = window()->focusWidget();
    return focus != nullptr && parentWidget()->isAncestorOf(focus) &&
           geometry().contains(focus->mapTo(parentWidget(), QPoint()));
}
