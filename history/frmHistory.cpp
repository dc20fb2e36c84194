#include "history/frmHistory.h"

#include "base/DialogKeys.h"
#include "base/Errors.h"
#include "base/Shell.h"
#include "base/ShownText.h"
#include "base/Twips.h"
#include "base/WindowParts.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFontInfo>
#include <QHeaderView>
#include <QHelpEvent>
#include <QIcon>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QScreen>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QToolTip>
#include <QVBoxLayout>

#include <algorithm>

namespace {
/// The least size of the window, in pixels: 2500 x 1590 twips, rounded up.
constexpr QSize leastSize(167, 106);

/// Whether a press in the grid, in any one unit, counts as one on the header. The
/// borders themselves do.
bool hitsHeader(QPoint place, int headerHeight, int columnsWidth)
{
    return place.y() <= headerHeight && place.x() <= columnsWidth;
}

/// Shows each cell on one line.
class OneLineDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale& /*locale*/) const override
    {
        return oneLineText(value.toString());
    }

    /// A date that is cut at its end is of no use, and its column has a fixed share of
    /// the width. So a large font is made small enough for the whole date.
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        const int margin = 2 * (QApplication::style()->pixelMetric(QStyle::PM_FocusFrameHMargin,
                                                                   option, option->widget) +
                                1);
        const int room = option->rect.width() - margin;
        const int wanted = option->fontMetrics.horizontalAdvance(option->text);
        if (index.column() != int(HistoryColumn::Date) || room <= 0 || wanted <= room)
            return;
        constexpr int leastPixels = 9;
        const int pixels = QFontInfo(option->font).pixelSize() * room / wanted;
        option->font.setPixelSize(std::max(leastPixels, pixels));
        option->fontMetrics = QFontMetrics(option->font);
    }

    /// Shows the whole text of a cell that is too narrow for it as a tool tip.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override
    {
        if (event->type() != QEvent::ToolTip)
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        const bool isCut = sizeHint(option, index).width() > option.rect.width();
        const QString text = displayText(index.data(), {});
        QToolTip::showText(event->globalPos(), isCut ? plainToolTip(text) : QString(), view);
        return true;
    }
};
} // namespace

frmHistory::frmHistory(Shell& shell, const HistoryCollection& history, QWidget* owner)
    : QMainWindow(owner, freeWindow), m_shell(shell), m_history(history)
{
    setObjectName(QStringLiteral("frmHistory"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Historie"));
    setWindowIcon(shell.frameIcon());
    buildControls();
    buildMenus();
    setMinimumSize(leastSize);
    resize(firstSize());
    ignoringErrors([this] { FillGrid(); });
    m_client->installEventFilter(this);
    m_grid->installEventFilter(this);
    m_grid->viewport()->installEventFilter(this);
    m_grid->horizontalHeader()->viewport()->installEventFilter(this);
    m_shell.bIsOpenHistory(true);
}

void frmHistory::buildControls()
{
    auto* const all = new QWidget(this);
    m_client = new QWidget(all);
    setCentralWidget(all);
    m_grid = new QTableView(m_client);
    m_grid->setObjectName(QStringLiteral("Grid"));
    m_grid->setAccessibleName(windowTitle());
    buildGrid();
    m_find = std::make_unique<HistoryFind>(m_table, *m_grid);
    m_findLine = new FindLine(*m_find, QStringLiteral("In der Historie suchen"), m_grid, this);
    auto* const column = new QVBoxLayout(all);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_client, 1);
    column->addWidget(m_findLine);
    m_grid->setFocus();
}

void frmHistory::buildGrid()
{
    m_grid->setModel(&m_table);
    m_grid->setItemDelegate(new OneLineDelegate(m_grid));
    m_grid->setFrameShape(QFrame::NoFrame);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setTabKeyNavigation(false);
    m_grid->setWordWrap(false);
    m_grid->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_grid->setDragDropMode(QAbstractItemView::DragOnly);

    QHeaderView* header = m_grid->horizontalHeader();
    QFont bold = header->font();
    bold.setBold(true);
    header->setFont(bold);
    header->setSectionsClickable(false);
    header->setHighlightSections(false);
    header->setSectionResizeMode(QHeaderView::Fixed);
    header->setMinimumSectionSize(1);

    // The header is a row like the others, all of the same height.
    constexpr int spacing = 4;
    const int rowHeight = QFontMetrics(bold).height() + spacing;
    header->setFixedHeight(rowHeight);
    QHeaderView* rows = m_grid->verticalHeader();
    rows->hide();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setMinimumSectionSize(1);
    rows->setDefaultSectionSize(rowHeight);
}

void frmHistory::addCommand(QMenu* menu, const QString& name, const QString& caption,
                            const std::function<void()>& command)
{
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, [command] { ignoringErrors(command); });
}

void frmHistory::buildMenus()
{
    menuBar()->setNativeMenuBar(false);
    m_menu = menuBar()->addMenu(QStringLiteral("&Tabelle"));
    m_menu->setObjectName(QStringLiteral("mn_Historie"));
    m_menu->menuAction()->setObjectName(m_menu->objectName());
    addCommand(m_menu, QStringLiteral("mn_Aktualisieren"), QStringLiteral("&Aktualisieren"),
               [this] { FillGrid(); });
    m_menu->addSeparator()->setObjectName(QStringLiteral("mn_tz1"));
    QMenu* sorts = m_menu->addMenu(QStringLiteral("&Sortieren"));
    sorts->setObjectName(QStringLiteral("mn_Sortieren"));
    sorts->menuAction()->setObjectName(sorts->objectName());
    addCommand(sorts, QStringLiteral("mn_SortAdr"), QStringLiteral("nach &Adresse"),
               [this] { sortBy(HistoryColumn::Address); });
    addCommand(sorts, QStringLiteral("mn_SortTitel"), QStringLiteral("nach &Titel"),
               [this] { sortBy(HistoryColumn::Title); });
    addCommand(sorts, QStringLiteral("mn_SortDate"), QStringLiteral("nach &Datum"),
               [this] { sortBy(HistoryColumn::Date); });
    m_menu->addSeparator()->setObjectName(QStringLiteral("mn_tz2"));
    addCommand(m_menu, QStringLiteral("mn_Schließen"), QStringLiteral("Schlie&ßen"),
               [this] { close(); });
}

QSize frmHistory::firstSize() const
{
    // Wide enough for a whole date in its fifth of the width.
    constexpr int cellMargins = 12;
    constexpr int scrollBar = 24;
    constexpr int rows = 20;
    const int date =
        m_grid->fontMetrics().horizontalAdvance(QStringLiteral("00.00.0000 - 00:00:00"));
    const QSize wanted(5 * (date + cellMargins) + scrollBar,
                       rows * m_grid->verticalHeader()->defaultSectionSize() +
                           menuBar()->sizeHint().height());
    return wanted.boundedTo(screen()->availableSize() * 9 / 10);
}

void frmHistory::FillGrid()
{
    m_table.fill(m_history);
    setWidths(freshWidths(toTwips(m_grid->width())));
    // The first widths count one more row, as if the grid still had the empty last row
    // behind which it is filled.
    if (m_table.rowCount() > 0)
        SizeColumns(1);
    sortBy(HistoryColumn::Date);
    m_grid->selectRow(0);
}

void frmHistory::SizeGrid()
{
    m_grid->setGeometry(m_client->rect());
}

void frmHistory::SizeColumns(int spareRows)
{
    const int rows = 1 + m_table.rowCount() + spareRows;
    setWidths(fittedWidths(toTwips(m_client->width()), toTwips(m_client->height()),
                           toTwips(m_grid->horizontalHeader()->height()), rows));
}

void frmHistory::setWidths(const HistoryWidths& twips)
{
    int column = 0;
    for (const int width : twips)
        m_grid->horizontalHeader()->resizeSection(column++, std::max(toPixels(width), 1));
}

void frmHistory::sortBy(HistoryColumn column)
{
    // A sort makes the header the current row, so no row of the data stays selected.
    m_grid->selectionModel()->clear();
    m_table.sortBy(column);
    m_findLine->searchedChanged();
}

int frmHistory::currentRow() const
{
    const QModelIndex current = m_grid->currentIndex();
    return m_grid->selectionModel()->isSelected(current) ? current.row() : -1;
}

bool frmHistory::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_client) {
        if (event->type() == QEvent::Resize) {
            SizeGrid();
            SizeColumns();
        }
        return false;
    }
    const bool onRows = watched == m_grid->viewport();
    switch (event->type()) {
    case QEvent::KeyPress:
        return watched == m_grid && gridKeyPressed(*static_cast<QKeyEvent*>(event));
    case QEvent::ContextMenu:
        contextMenuWanted(*static_cast<QContextMenuEvent*>(event));
        return true;
    case QEvent::MouseButtonDblClick:
        if (onRows && static_cast<QMouseEvent*>(event)->button() != Qt::RightButton) {
            gridDoubleClicked();
            return true;
        }
        [[fallthrough]];
    case QEvent::MouseButtonPress: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        const int below = onRows ? m_grid->horizontalHeader()->height() : 0;
        return watched != m_grid && mousePressed(*mouse, mouse->pos() + QPoint(0, below));
    }
    default:
        return false;
    }
}

bool frmHistory::mousePressed(const QMouseEvent& event, QPoint inGrid)
{
    if (event.button() == Qt::RightButton) {
        m_menu->popup(event.globalPosition().toPoint());
        return true;
    }
    const QHeaderView* header = m_grid->horizontalHeader();
    const int width = header->length();
    m_headerClick = hitsHeader(inGrid, header->height(), width);
    if (!m_headerClick)
        return false;
    // The right border counts as the last column.
    const int column = header->logicalIndexAt(std::clamp(inGrid.x(), 0, width - 1));
    ignoringErrors([this, column] { sortBy(static_cast<HistoryColumn>(column)); });
    return true;
}

void frmHistory::gridDoubleClicked()
{
    const int row = currentRow();
    if (row < 0 || m_headerClick)
        return;
    ignoringErrors([this, row] { m_shell.VisitUrl(m_table.address(row)); });
    close();
}

bool frmHistory::gridKeyPressed(const QKeyEvent& event)
{
    if (isEnterKey(event)) {
        // Nothing opens yet: the next new browser window starts there.
        if (const int row = currentRow(); row >= 0)
            ignoringErrors([this, row] { m_shell.HistoryUrl(m_table.address(row)); });
    } else if (!isEscapeKey(event)) {
        return rowReached(event);
    }
    close();
    return true;
}

bool frmHistory::rowReached(const QKeyEvent& event)
{
    const int last = m_table.rowCount() - 1;
    const bool isToEnd = event.key() == Qt::Key_End;
    // Qt moves through the columns on Home and End, but the current column cannot be seen
    // here. After a sort nothing is selected, and Qt would take Down and Page Down as
    // moves from the first row, not from the header.
    const bool isFromHeader =
        currentRow() < 0 && (event.key() == Qt::Key_Down || event.key() == Qt::Key_PageDown);
    if (last < 0 || (!isToEnd && !isFromHeader && event.key() != Qt::Key_Home))
        return false;
    m_grid->selectRow(isToEnd ? last : 0);
    return true;
}

void frmHistory::contextMenuWanted(const QContextMenuEvent& event)
{
    // With the mouse the menu has opened already, at the press.
    if (event.reason() != QContextMenuEvent::Keyboard)
        return;
    const QRect row = m_grid->visualRect(m_grid->currentIndex());
    m_menu->popup(m_grid->viewport()->mapToGlobal(row.bottomLeft()));
}

void frmHistory::keyPressEvent(QKeyEvent* event)
{
    if (isEscapeKey(*event))
        close();
    else
        QMainWindow::keyPressEvent(event);
}

void frmHistory::closeEvent(QCloseEvent* event)
{
    m_shell.bIsOpenHistory(false);
    QMainWindow::closeEvent(event);
}
