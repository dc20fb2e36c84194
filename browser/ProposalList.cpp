#include "browser/ProposalList.h"

#include "base/ShownText.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPainter>
#include <QScreen>
#include <QStyledItemDelegate>

using namespace Qt::StringLiterals;

namespace {
constexpr int addressRole = Qt::UserRole;
/// Less shows too little of an address to tell it from others, in pixels.
constexpr int narrowest = 320;

/// Draws a title and its address below it.
class ProposalDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const override
    {
        return {0, 2 * option.fontMetrics.height() + 2 * margin};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        const bool isChosen = option.state.testFlag(QStyle::State_Selected);
        const bool isUnderMouse = option.state.testFlag(QStyle::State_MouseOver);
        const QPalette& colours = option.palette;
        if (isChosen || isUnderMouse)
            painter->fillRect(option.rect, colours.brush(isChosen ? QPalette::Highlight
                                                                  : QPalette::AlternateBase));
        const QRect inside = option.rect.adjusted(margin, margin, -margin, -margin);
        const auto line = [&](int number, const QString& text, Qt::TextElideMode cut,
                              QPalette::ColorRole role) {
            const QRect place(inside.x(), inside.y() + number * option.fontMetrics.height(),
                              inside.width(), option.fontMetrics.height());
            painter->setPen(colours.color(isChosen ? QPalette::HighlightedText : role));
            painter->drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                              option.fontMetrics.elidedText(text, cut, place.width()));
        };
        line(0, index.data().toString(), Qt::ElideRight, QPalette::Text);
        line(1, oneLineText(index.data(addressRole).toString()), Qt::ElideMiddle,
             QPalette::PlaceholderText);
    }

private:
    static constexpr int margin = 3;
};
} // namespace

ProposalList::ProposalList(QWidget* line) : QListWidget(line), m_line(line)
{
    setObjectName(u"Proposals"_s);
    setWindowTitle(u"Vorschläge"_s); // nobody shows it, but assistive tools name it
    // A window of this kind is left alone by window managers, and gets no focus by a click.
    setWindowFlags(Qt::ToolTip);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_Hover);
    setItemDelegate(new ProposalDelegate(this));
    connect(this, &QListWidget::itemClicked, this, [this](const QListWidgetItem* row) {
        emit addressClicked(row->data(addressRole).toString());
    });
}

void ProposalList::propose(const std::vector<KnownAddress>& proposals)
{
    clear();
    m_choice = -1;
    for (const KnownAddress& one : proposals) {
        auto* row = new QListWidgetItem(oneLineText(one.title), this);
        row->setData(addressRole, one.address);
    }
    if (!proposals.empty())
        place();
    setVisible(!proposals.empty());
}

std::optional<QString> ProposalList::choice() const
{
    if (isHidden() || m_choice < 0)
        return {};
    return item(m_choice)->data(addressRole).toString();
}

void ProposalList::step(int rows)
{
    const int places = count() + 1; // and one for no choice
    m_choice = (m_choice + 1 + rows + places) % places - 1;
    setCurrentRow(m_choice, QItemSelectionModel::ClearAndSelect);
    if (m_choice < 0)
        clearSelection();
}

void ProposalList::place()
{
    const QRect screen = m_line->screen()->availableGeometry();
    const int width = qMax(m_line->width(), qMin(narrowest, screen.width()));
    const QSize size(width, count() * sizeHintForRow(0) + 2 * frameWidth());
    QRect where(m_line->mapToGlobal(m_line->rect().bottomLeft()) + QPoint(0, 1), size);
    if (m_line->width() < width)
        where.moveLeft(qBound(screen.left(), where.left(), screen.right() + 1 - width));
    if (where.bottom() > screen.bottom())
        where.moveBottom(m_line->mapToGlobal(QPoint(0, 0)).y() - 1);
    setGeometry(where);
}

void ProposalList::showEvent(QShowEvent* event)
{
    QListWidget::showEvent(event);
    qApp->installEventFilter(this);
}

void ProposalList::hideEvent(QHideEvent* event)
{
    qApp->removeEventFilter(this);
    QListWidget::hideEvent(event);
}

bool ProposalList::isElsewhere(const QWidget& widget) const
{
    const bool isHere = &widget == this || isAncestorOf(&widget) || &widget == m_line ||
                        m_line->isAncestorOf(&widget);
    return !isHere;
}

bool ProposalList::eventFilter(QObject* watched, QEvent* event)
{
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr)
        return QListWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (isElsewhere(*widget))
            emit dismissed();
        break;
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Hide:
    case QEvent::WindowStateChange:
    case QEvent::WindowDeactivate:
        if (widget == m_line || widget->isAncestorOf(m_line))
            emit dismissed();
        break;
    default:
        break;
    }
    return QListWidget::eventFilter(watched, event);
}
