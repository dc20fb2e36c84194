#include "browser/SystemMenu.h"

#include "base/DialogKeys.h"

#include <QAction>
#include <QHash>
#include <QKeyEvent>
#include <QMdiSubWindow>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace {
/// How far an arrow key moves a border, in pixels; one pixel with Ctrl.
constexpr int placingStep = 10;

/// The captions of the items by those that the toolkit gave them.
QHash<QString, QString> captions()
{
    return {{QMdiSubWindow::tr("&Restore"), u"&Wiederherstellen"_s},
            {QMdiSubWindow::tr("&Move"), u"&Verschieben"_s},
            {QMdiSubWindow::tr("&Size"), u"&Größe ändern"_s},
            {QMdiSubWindow::tr("Mi&nimize"), u"Mi&nimieren"_s},
            {QMdiSubWindow::tr("Ma&ximize"), u"Ma&ximieren"_s},
            {QMdiSubWindow::tr("Stay on &Top"), u"Im Vordergrund &bleiben"_s},
            {QMdiSubWindow::tr("&Close"), u"&Schließen"_s}};
}
} // namespace

SystemMenu::SystemMenu(QMdiSubWindow& window) : m_window(window)
{
    settleItems();
}

void SystemMenu::settleItems()
{
    const QHash<QString, Placing> placings{{QMdiSubWindow::tr("&Move"), Placing::Move},
                                           {QMdiSubWindow::tr("&Size"), Placing::Size}};
    const QHash<QString, QString> german = captions();
    const QList<QAction*> items = m_window.systemMenu()->actions();
    for (QAction* item : items) {
        item->setShortcut({});
        if (const Placing placing = placings.value(item->text(), Placing::None);
            placing != Placing::None) {
            item->disconnect(&m_window);
            connect(item, &QAction::triggered, this, [this, placing] { beginPlacing(placing); });
        }
        item->setText(german.value(item->text(), item->text()));
    }
}

void SystemMenu::beginPlacing(Placing placing)
{
    m_placing = placing;
    m_placeBefore = m_window.geometry();
    // The toolkit passes a focus of the window itself on to what is inside. Keys that this
    // widget does not know come to the window.
    m_keyCatcher = new QWidget(&m_window);
    m_keyCatcher->setFocusPolicy(Qt::StrongFocus);
    m_keyCatcher->resize(0, 0);
    m_keyCatcher->installEventFilter(this);
    m_keyCatcher->show();
    m_keyCatcher->setFocus();
    emit hintChanged(
        placing == Placing::Move
            ? u"Verschieben mit den Pfeiltasten; Eingabetaste übernimmt, Esc verwirft"_s
            : u"Größe ändern mit den Pfeiltasten; Eingabetaste übernimmt, Esc verwirft"_s);
}

void SystemMenu::endPlacing()
{
    if (!isPlacing())
        return;
    m_placing = Placing::None;
    m_keyCatcher->deleteLater();
    emit hintChanged({});
}

void SystemMenu::cancelPlacing()
{
    m_window.setGeometry(m_placeBefore);
    endPlacing();
    emit placed();
}

void SystemMenu::keyPressed(const QKeyEvent& event)
{
    if (isEscapeKey(event)) {
        cancelPlacing();
        return;
    }
    if (isEnterKey(event)) {
        endPlacing();
        emit placed();
        return;
    }
    const int step = event.modifiers() & Qt::ControlModifier ? 1 : placingStep;
    m_window.setGeometry(placedByKey(m_window.geometry(), m_placing, event.key(), step,
                                     m_window.parentWidget()->size(), m_window.minimumSizeHint()));
}

bool SystemMenu::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_keyCatcher && event->type() == QEvent::FocusOut)
        endPlacing();
    return QObject::eventFilter(watched, event);
}
