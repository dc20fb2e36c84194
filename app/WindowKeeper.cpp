#include "app/WindowKeeper.h"

#include "app/ActiveChild.h"
#include "app/ChildArea.h"
#include "app/FrameMenus.h"
#include "app/MDIForm1.h"
#include "base/RunCommand.h"
#include "browser/BrowserLayout.h"

#include <QEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace {
/// A page that changes its title without end must not keep the disk busy.
constexpr std::chrono::seconds betweenWrites(2);

OpenWindows::State stateOf(const QWidget& window)
{
    if (window.isMinimized())
        return OpenWindows::State::Minimised;
    return window.isMaximized() ? OpenWindows::State::Maximised : OpenWindows::State::Normal;
}

QString offerText(qsizetype count)
{
    return count == 1 ? u"Beim letzten Mal war 1 Fenster offen"_s
                      : u"Beim letzten Mal waren %1 Fenster offen"_s.arg(count);
}
} // namespace

WindowKeeper::WindowKeeper(MDIForm1& frame, const QString& path)
    : QObject(&frame), m_frame(frame), m_file(path, [&frame](const QString& reason) {
          QMetaObject::invokeMethod(&frame, [&frame, reason] {
              frame.statusText(u"Offene Fenster werden nicht gesichert. "_s + reason);
          });
      })
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(betweenWrites);
    connect(&m_timer, &QTimer::timeout, this, &WindowKeeper::keep);
    // A window that is maximised gets its new size before its new state.
    m_placesTimer.setSingleShot(true);
    connect(&m_placesTimer, &QTimer::timeout, this, &WindowKeeper::notePlaces);
    connect(&frame, &MDIForm1::browserAdded, this, [this](frmBrowser& window) { watch(window); });
    connect(&frame, &MDIForm1::browserClosing, this, [this](const frmBrowser& window) {
        m_places.remove(&window);
        changed();
    });
    connect(&frame.area(), &QMdiArea::subWindowActivated, this, &WindowKeeper::changed);
    connect(&frame, &MDIForm1::unloaded, this, [this] {
        m_timer.stop();
        m_file.remove();
    });
    frame.installEventFilter(this);
    if (const auto left = m_file.left(); left && !left->windows.isEmpty()) {
        m_offered = *left;
        offer();
    }
}

bool WindowKeeper::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowStateChange:
        changed();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void WindowKeeper::watch(frmBrowser& window)
{
    window.installEventFilter(this);
    connect(&window, &frmBrowser::pageChanged, this, &WindowKeeper::changed);
    changed();
}

void WindowKeeper::notePlaces()
{
    for (const frmBrowser* window : m_frame.Browser())
        if (stateOf(*window) == OpenWindows::State::Normal)
            m_places[window] = window->geometry();
}

void WindowKeeper::changed()
{
    m_placesTimer.start();
    if (!m_timer.isActive())
        m_timer.start();
}

void WindowKeeper::keep()
{
    // While the frame closes its windows, a kill is to find all of them.
    if (!m_frame.isUnloading())
        m_file.keep(snapshot());
}

OpenWindows WindowKeeper::snapshot() const
{
    OpenWindows open = m_offered;
    for (const frmBrowser* window : m_frame.Browser()) {
        if (window->isPrivate() || window->address().isEmpty())
            continue;
        if (window == m_frame.activeBrowser())
            open.active = open.windows.size();
        open.windows.append({window->address(), window->pageTitle(),
                             m_places.value(window, window->geometry()), stateOf(*window)});
    }
    open.arrangement = m_frame.menus().checkedArrangement();
    open.frame = m_frame.isMaximized() || m_frame.isFullScreen() ? m_frame.normalGeometry()
                                                                 : m_frame.geometry();
    open.isFrameMaximised = m_frame.isMaximized();
    return open;
}

void WindowKeeper::offer()
{
    delete m_bar;
    m_bar = new QToolBar(u"Fenster vom letzten Mal"_s, &m_frame);
    m_bar->setObjectName(u"tbReopen"_s);
    m_bar->setMovable(false);
    m_bar->setContextMenuPolicy(Qt::PreventContextMenu);
    auto* const label = new QLabel(offerText(m_offered.windows.size()), m_bar);
    label->setObjectName(u"lblReopen"_s);
    label->setContentsMargins(6, 0, 12, 0);
    m_bar->addWidget(label);
    const auto addButton = [this](const QString& name, const QString& text, const QString& tip,
                                  void (WindowKeeper::*action)()) {
        auto* const button = new QPushButton(text, m_bar);
        button->setObjectName(name);
        button->setToolTip(tip);
        m_bar->addWidget(button);
        connect(button, &QPushButton::clicked, this, action, Qt::QueuedConnection);
    };
    addButton(u"btnReopen"_s, u"&Wieder öffnen"_s,
              u"Öffnet die Fenster mit ihren Adressen; eine Seite lädt, sobald sie zu sehen ist"_s,
              &WindowKeeper::reopen);
    addButton(u"btnDiscard"_s, u"&Verwerfen"_s, u"Vergisst die Fenster vom letzten Mal"_s,
              &WindowKeeper::discard);
    m_frame.addToolBar(m_bar);
}

void WindowKeeper::reopen()
{
    OpenWindows wanted = std::exchange(m_offered, {});
    delete m_bar;
    placeFrame(wanted);
    m_frame.menus().checkArrangement(wanted.arrangement);
    runCommand(m_frame, &m_frame, [&] { m_offered.windows = open(wanted); });
    if (!m_offered.windows.isEmpty())
        offer();
    changed();
}

void WindowKeeper::placeFrame(const OpenWindows& wanted) const
{
    if (m_frame.isFullScreen())
        return; // a place would end it, but leave the bars folded
    if (wanted.isFrameMaximised)
        m_frame.showMaximized();
    else if (QGuiApplication::screenAt(wanted.frame.center()) != nullptr)
        m_frame.setGeometry(wanted.frame);
}

QList<OpenWindows::Window> WindowKeeper::open(const OpenWindows& wanted)
{
    QList<QPointer<frmBrowser>> opened;
    for (const OpenWindows::Window& window : wanted.windows) {
        opened.append(m_frame.addBrowser(nullptr, [&](frmBrowser& created) {
            created.StartingAddress(window.address);
            created.beginWhenSeen(window.title);
        }));
        if (opened.constLast().isNull()) // there is no room for more
            break;
    }
    // Placed only now: each new window arranges those before it.
    for (qsizetype i = 0; i < opened.size(); ++i)
        if (opened[i] && i != wanted.active)
            place(*opened[i], wanted.windows[i], wanted.arrangement);
    if (const QPointer<frmBrowser> active = opened.value(wanted.active)) {
        m_frame.activeChild().choose(*active);
        place(*active, wanted.windows[wanted.active], wanted.arrangement);
    }
    const bool isAll = opened.isEmpty() || !opened.constLast().isNull();
    return isAll ? QList<OpenWindows::Window>() : wanted.windows.mid(opened.size() - 1);
}

void WindowKeeper::place(frmBrowser& window, const OpenWindows::Window& wanted,
                         Arrangement arrangement)
{
    if (arrangement == Arrangement::None)
        window.setGeometry(movedInside(wanted.place, m_frame.area().viewport()->size()));
    m_places[&window] = window.geometry();
    if (wanted.state == OpenWindows::State::Minimised)
        window.showMinimized();
    else if (wanted.state == OpenWindows::State::Maximised)
        window.showMaximized();
}

void WindowKeeper::discard()
{
    m_offered = {};
    delete m_bar;
    changed();
}
