#include "browser/AddressBar.h"

#include "base/DialogKeys.h"
#include "base/DroppedAddress.h"
#include "browser/PageTexts.h"

#include <QComboBox>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>

#include <chrono>
#include <limits>

using namespace Qt::StringLiterals;

namespace {
constexpr int margin = 4;

/// How long a page that has been reached takes to its first picture.
constexpr std::chrono::milliseconds untilFirstPicture(25);
} // namespace

AddressBar::AddressBar(QWidget* parent)
    : QWidget(parent), m_label(new QLabel(u"&Adresse:"_s, this)), m_address(new QComboBox(this))
{
    setObjectName(u"picAddress"_s);
    m_label->setObjectName(u"lblAddress"_s);
    m_label->setBuddy(m_address);
    m_address->setObjectName(u"cboAddress"_s);
    m_address->setEditable(true);
    m_address->setInsertPolicy(QComboBox::NoInsert);
    m_address->setCompleter(nullptr);
    m_address->lineEdit()->setMaxLength(std::numeric_limits<int>::max()); // "data:" may be long
    m_address->setAcceptDrops(true);
    // The line inside the box is what has the focus, and what assistive tools name.
    m_address->lineEdit()->setAccessibleName(u"Adresse"_s);
    m_address->setToolTip(u"Adresse eingeben und mit der Eingabetaste öffnen"_s);
    // The line would insert a drop into its text; here a drop replaces it.
    m_address->installEventFilter(this);
    m_address->lineEdit()->installEventFilter(this);
    connect(m_address->lineEdit(), &QLineEdit::textEdited, this, [this](const QString& text) {
        m_typed = text;
        m_isOpening = false;
    });

    m_label->move(margin, margin);
    m_label->resize(m_label->sizeHint().width(), m_address->sizeHint().height());
    m_address->move(m_label->width() + 2 * margin, margin);
    m_address->resize(m_address->sizeHint());
}

QString AddressBar::address() const
{
    const QString text = m_address->currentText();
    return text == addressShown(m_shown) ? m_shown : text;
}

void AddressBar::showAddress(const QString& address)
{
    m_address->setEditText(address);
    m_typed.reset();
}

void AddressBar::visited(const QString& address)
{
    // Each paint composes the whole frame with all its pages, and would hold up the new page
    // in the middle of its load. So the address is painted along with its first picture.
    setUpdatesEnabled(false);
    QTimer::singleShot(untilFirstPicture, this, [this] { setUpdatesEnabled(true); });
    m_shown = address;
    m_isOpening = false;
    const int found = m_address->findText(address, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (found >= 0)
        m_address->removeItem(found);
    if (isKept(address))
        m_address->insertItem(0, address);
    showPage();
}

void AddressBar::showPage()
{
    m_address->setCurrentIndex(isKept(m_shown) ? 0 : -1);
    showAddress(addressShown(m_shown));
    m_address->lineEdit()->setCursorPosition(0); // so that the host of a long address can be seen
}

void AddressBar::loadEnded()
{
    if (!m_isOpening)
        return;
    const bool isSelected = m_address->lineEdit()->hasSelectedText();
    discardText();
    if (isSelected)
        m_address->lineEdit()->selectAll();
}

int AddressBar::addressLeft() const
{
    return m_address->x();
}

int AddressBar::panelHeight() const
{
    return m_address->sizeHint().height() + 2 * margin;
}

void AddressBar::addressWidth(int width)
{
    m_address->resize(width, m_address->height());
}

void AddressBar::focusAddress()
{
    m_address->setFocus(Qt::ShortcutFocusReason);
    m_address->lineEdit()->selectAll();
}

bool AddressBar::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        return keyPressed(*static_cast<QKeyEvent*>(event));
    case QEvent::FocusOut:
        focusLeft(static_cast<QFocusEvent*>(event)->reason());
        return false;
    case QEvent::DragEnter:
    case QEvent::DragMove: {
        auto* drag = static_cast<QDragMoveEvent*>(event);
        drag->setDropAction(Qt::CopyAction);
        drag->setAccepted(!droppedAddress(*drag->mimeData()).isEmpty());
        return true;
    }
    case QEvent::Drop: {
        auto* drop = static_cast<QDropEvent*>(event);
        drop->setDropAction(Qt::CopyAction);
        drop->setAccepted(dropped(*drop->mimeData()));
        return true;
    }
    default:
        return QWidget::eventFilter(watched, event);
    }
}

bool AddressBar::keyPressed(const QKeyEvent& event)
{
    if (isEscapeKey(event)) {
        discardText();
        m_address->lineEdit()->selectAll();
        return true;
    }
    if (event.key() != Qt::Key_Return && event.key() != Qt::Key_Enter)
        return false;
    open();
    return true;
}

void AddressBar::open()
{
    m_isOpening = true;
    const QString wanted = address();
    emit entered(wanted, m_typed == wanted);
    m_address->update();
}

void AddressBar::discardText()
{
    m_isOpening = false;
    showPage();
}

void AddressBar::focusLeft(Qt::FocusReason reason)
{
    // From the line's own menu and list, the menu bar, and other programs the user comes back
    // to what was typed.
    const bool comesBack = reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason ||
                           reason == Qt::ActiveWindowFocusReason;
    if (comesBack)
        return;
    // While windows are arranged the focus goes to another one and comes back at once; the
    // line of a minimised window waits for it.
    QTimer::singleShot(0, this, [this] {
        const bool isMinimised = !isVisible() && !isHidden();
        const bool isLeft = !m_address->lineEdit()->hasFocus() && !isMinimised;
        if (isLeft && !m_isOpening && address() != m_shown)
            discardText();
    });
}

bool AddressBar::dropped(const QMimeData& offered)
{
    const DroppedAddress address = droppedAddress(offered);
    if (address.isEmpty())
        return false;
    showAddress(address.text ? *address.text : address.files.constFirst());
    open();
    return true;
}
