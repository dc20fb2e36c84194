#include "browser/AddressBar.h"

#include "base/DialogKeys.h"
#include "base/DroppedAddress.h"
#include "browser/PageTexts.h"
#include "browser/ProposalList.h"
#include "browser/ProposalSource.h"
#include "browser/SafetySign.h"

#include <QComboBox>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include <chrono>
#include <limits>

using namespace Qt::StringLiterals;

namespace {
constexpr int margin = 4;

/// How long a page that has been reached takes to its first picture.
constexpr std::chrono::milliseconds untilFirstPicture(25);
} // namespace

AddressBar::AddressBar(ProposalSource& source, QWidget* parent)
    : QWidget(parent), m_source(source), m_label(new QLabel(u"&Adresse:"_s, this)),
      m_address(new QComboBox(this))
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
    m_sign = new SafetySign(m_address->lineEdit());
    m_address->setToolTip(u"Adresse eingeben und mit der Eingabetaste öffnen"_s);
    // The line would insert a drop into its text; here a drop replaces it.
    m_address->installEventFilter(this);
    m_address->lineEdit()->installEventFilter(this);
    connect(m_address->lineEdit(), &QLineEdit::textEdited, this, &AddressBar::edited);
    connect(m_address->lineEdit(), &QLineEdit::textChanged, this, &AddressBar::adjustSign);
    connect(&source, &ProposalSource::grown, this, [this] {
        if (m_maybeMore)
            propose();
    });

    m_untilPainted.setSingleShot(true);
    connect(&m_untilPainted, &QTimer::timeout, this, [this] {
        setUpdatesEnabled(true);
        repaint(); // at once, as the next change may come before it is painted
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
    dismissProposals();
    m_address->setEditText(address);
    m_typed.reset();
    adjustSign(); // the text may have stood there before its page
}

void AddressBar::adjustSign()
{
    m_sign->isOfPage(address() == m_shown);
}

void AddressBar::visited(const QString& address)
{
    paintWithPage();
    m_shown = address;
    m_isOpening = false;
    const int found = m_address->findText(address, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (found >= 0)
        m_address->removeItem(found);
    if (isKept(address))
        m_address->insertItem(0, address);
    showPage();
}

void AddressBar::paintWithPage()
{
    if (m_untilPainted.isActive())
        return;
    setUpdatesEnabled(false);
    m_untilPainted.start(untilFirstPicture);
}

void AddressBar::showPage()
{
    m_address->setCurrentIndex(isKept(m_shown) ? 0 : -1);
    showAddress(addressShown(m_shown));
    m_address->lineEdit()->setCursorPosition(0); // so that the host of a long address can be seen
}

void AddressBar::announce(const QString& address)
{
    m_shown = address;
    showAddress(addressShown(address));
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
    case QEvent::FocusIn:
        prepareProposals();
        return false;
    case QEvent::ShortcutOverride: // Escape would stop a load
        event->setAccepted(isProposing() && isEscapeKey(*static_cast<QKeyEvent*>(event)));
        return event->isAccepted();
    case QEvent::KeyPress:
        return keyPressed(*static_cast<QKeyEvent*>(event));
    case QEvent::FocusOut:
        dismissProposals();
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

void AddressBar::prepareProposals()
{
    m_source.prepare();
    std::vector<KnownAddress> own;
    own.reserve(static_cast<std::size_t>(m_address->count()));
    for (int i = 0; i < m_address->count(); ++i)
        own.push_back({m_address->itemText(i), {}});
    m_own = KnownAddresses(std::move(own));
}

void AddressBar::edited(const QString& text)
{
    m_typed = text;
    m_isOpening = false;
    m_maybeMore = true;
    propose();
}

void AddressBar::propose()
{
    const std::vector<KnownAddress> proposals = m_source.proposals(*m_typed, m_own);
    if (m_proposals == nullptr && proposals.empty())
        return;
    if (m_proposals == nullptr) {
        m_proposals = new ProposalList(m_address);
        connect(m_proposals, &ProposalList::addressClicked, this, &AddressBar::openProposal);
        connect(m_proposals, &ProposalList::dismissed, this, &AddressBar::dismissProposals);
    }
    m_proposals->propose(proposals);
}

bool AddressBar::isProposing() const
{
    return m_proposals != nullptr && !m_proposals->isHidden();
}

void AddressBar::choose(int rows)
{
    m_maybeMore = false; // the rows stay as they are while one of them is chosen
    m_proposals->step(rows);
    m_address->setEditText(m_proposals->choice().value_or(*m_typed));
}

void AddressBar::openProposal(const QString& address)
{
    showAddress(address);
    open();
}

void AddressBar::dismissProposals()
{
    m_maybeMore = false;
    if (!isProposing())
        return;
    const bool isChosen = m_proposals->choice().has_value();
    m_proposals->hide();
    if (isChosen)
        m_address->setEditText(*m_typed);
}

bool AddressBar::proposalKeyPressed(const QKeyEvent& event)
{
    const bool isPlain = (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (isPlain && (event.key() == Qt::Key_Down || event.key() == Qt::Key_Up)) {
        choose(event.key() == Qt::Key_Down ? 1 : -1);
        return true;
    }
    if (isEscapeKey(event)) {
        dismissProposals();
        return true;
    }
    if (isEnterKey(event) && m_proposals->choice()) {
        openProposal(*m_proposals->choice());
        return true;
    }
    // Their rows are taken by the line's own list.
    if (event.key() == Qt::Key_Down || event.key() == Qt::Key_Up ||
        event.key() == Qt::Key_PageDown || event.key() == Qt::Key_PageUp)
        dismissProposals();
    return false;
}

bool AddressBar::keyPressed(const QKeyEvent& event)
{
    if (isProposing() && proposalKeyPressed(event))
        return true;
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
    dismissProposals();
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
        if (!isLeft || m_isOpening)
            return;
        if (address() == m_shown)
            m_address->lineEdit()->setCursorPosition(0); // as showPage() does
        else
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
