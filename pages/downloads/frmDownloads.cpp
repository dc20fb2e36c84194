#include "pages/downloads/frmDownloads.h"

#include "base/DialogKeys.h"
#include "base/Prompt.h"
#include "base/RunCommand.h"
#include "base/WindowParts.h"
#include "pages/downloads/FileNames.h"

#include <QApplication>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// On both sides of a column's texts, in pixels.
constexpr int cellMargins = 24;

QString pauseCaption()
{
    return u"An&halten"_s;
}

QString goOnCaption()
{
    return u"Fort&setzen"_s;
}

/// Draws a percentage as a progress bar; an unknown one as an empty bar.
class ProgressDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        const int percent = index.data().toInt();
        QStyleOptionProgressBar bar;
        bar.state = option.state | QStyle::State_Horizontal;
        bar.direction = option.direction;
        bar.fontMetrics = option.fontMetrics;
        bar.palette = option.palette;
        constexpr int margin = 2;
        bar.rect = option.rect.adjusted(margin, margin, -margin, -margin);
        bar.minimum = 0;
        bar.maximum = 100;
        bar.progress = std::max(percent, 0);
        bar.textVisible = true;
        bar.textAlignment = Qt::AlignCenter;
        bar.text = displayText(percent, {});
        const QStyle* style = option.widget != nullptr ? option.widget->style() //
                                                       : QApplication::style();
        style->drawControl(QStyle::CE_ProgressBar, &bar, painter, option.widget);
    }

    QString displayText(const QVariant& value, const QLocale& /*locale*/) const override
    {
        return value.toInt() < 0 ? QString() : u"%1 %"_s.arg(value.toInt());
    }
};

} // namespace

frmDownloads::frmDownloads(Shell& shell, QWidget* owner, DownloadTable& table, Opener open)
    : QDialog(owner, freeWindow), m_shell(shell), m_table(table), m_open(std::move(open))
{
    setObjectName(u"frmDownloads"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(u"Downloads"_s);
    setWindowIcon(shell.frameIcon());
    buildControls();
    connectControls();
    if (table.rowCount() > 0)
        m_list->selectRow(table.rowCount() - 1);
    updateButtons();
}

void frmDownloads::buildControls()
{
    m_list = new QTableView;
    buildList();
    auto* const buttons = new QHBoxLayout;
    m_cancel = makeButton(u"cmdCancel"_s, u"&Abbrechen"_s,
                          u"Bricht die ausgewählten Downloads ab und entfernt, was schon da ist"_s);
    m_pause = makeButton(u"cmdPause"_s, pauseCaption(), u"Hält laufende Downloads an"_s);
    // It keeps its width when its caption changes.
    QPushButton* const other = makeButton({}, goOnCaption());
    m_pause->setMinimumWidth(std::max(m_pause->sizeHint().width(), other->sizeHint().width()));
    delete other;
    m_reload = makeButton(u"cmdReload"_s, u"&Erneut laden"_s,
                          u"Setzt fort, was abgerissen ist, wenn der Server das zulässt, und "
                          "beginnt sonst von vorn; Name und Ordner bleiben"_s);
    m_openFile = makeButton(u"cmdOpen"_s, u"Ö&ffnen"_s, u"Öffnet die ausgewählte Datei"_s);
    m_showFolder = makeButton(u"cmdFolder"_s, u"&Ordner anzeigen"_s,
                              u"Zeigt den Ordner, in dem die Datei liegt"_s);
    m_clear = makeButton(u"cmdClear"_s, u"&Liste leeren"_s,
                         u"Nimmt die beendeten Downloads aus der Liste; die Dateien bleiben"_s);
    for (QPushButton* button : {m_cancel, m_pause, m_reload, m_openFile, m_showFolder})
        buttons->addWidget(button);
    buttons->addStretch();
    buttons->addWidget(m_clear);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_list);
    layout->addLayout(buttons);
    m_list->setFocus();
    constexpr QSize firstSize(900, 240);
    QHeaderView& header = *m_list->horizontalHeader();
    // With large letters the window begins larger.
    const int state =
        fontMetrics().horizontalAdvance(u"Wird von vorn geladen, noch etwa 10 Minuten"_s) +
        cellMargins;
    const int others = header.sectionSize(DownloadTable::Size) +
                       header.sectionSize(DownloadTable::Progress) + state;
    const QSize roomForLetters(others * 5 / 4, 12 * fontMetrics().height());
    resize(firstSize.expandedTo(roomForLetters).boundedTo(screen()->availableSize() * 9 / 10));
    header.resizeSection(DownloadTable::Name,
                         std::max({width() - others - 2 * cellMargins, width() / 5,
                                   header.sectionSizeHint(DownloadTable::Name)}));
}

void frmDownloads::buildList()
{
    m_list->setObjectName(u"lstDownloads"_s);
    m_list->setAccessibleName(windowTitle());
    m_list->setModel(&m_table);
    m_list->setItemDelegateForColumn(DownloadTable::Progress, new ProgressDelegate(m_list));
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setTabKeyNavigation(false);
    m_list->setShowGrid(false);
    m_list->setWordWrap(false);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->verticalHeader()->hide();
    QHeaderView* const header = m_list->horizontalHeader();
    header->setSectionsClickable(false);
    header->setHighlightSections(false);
    header->setSectionResizeMode(QHeaderView::Interactive);
    header->setStretchLastSection(true);
    header->ensurePolished();
    header->resizeSection(DownloadTable::Progress,
                          std::max(100, header->sectionSizeHint(DownloadTable::Progress)));
    header->resizeSection(DownloadTable::Size,
                          fontMetrics().horizontalAdvance(u"000,0 MB von 000,0 MB"_s) +
                              cellMargins);
}

void frmDownloads::connectControls()
{
    connect(m_cancel, &QPushButton::clicked, this, [this] { forSelected(&DownloadTable::cancel); });
    connect(m_pause, &QPushButton::clicked, this, [this] {
        const bool pauses = m_pause->text() == pauseCaption();
        forSelected(pauses ? &DownloadTable::pause : &DownloadTable::goOn);
    });
    connect(m_reload, &QPushButton::clicked, this, [this] { forSelected(&DownloadTable::reload); });
    connect(m_openFile, &QPushButton::clicked, this, &frmDownloads::openFile);
    connect(m_showFolder, &QPushButton::clicked, this, &frmDownloads::showFolder);
    connect(m_clear, &QPushButton::clicked, &m_table, &DownloadTable::removeFinished);
    connect(m_list, &QTableView::doubleClicked, this, [this] {
        if (m_openFile->isEnabled())
            openFile();
    });
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &frmDownloads::updateButtons);
    connect(&m_table, &DownloadTable::dataChanged, this, &frmDownloads::updateButtons);
    connect(&m_table, &DownloadTable::rowsRemoved, this, &frmDownloads::updateButtons);
    connect(&m_table, &DownloadTable::rowsInserted, this,
            [this](const QModelIndex&, int, int row) { followNew(row); });
}

void frmDownloads::followNew(int row)
{
    // While the user is choosing in this window a new download does not take the selection.
    if (!isActiveWindow() || selected().isEmpty())
        m_list->selectRow(row);
    m_list->scrollToBottom();
    updateButtons();
}

void frmDownloads::showQuietly()
{
    if (isVisible())
        return;
    // The owner's lower right corner is where the list hides least of what is being read.
    if (const QWidget* owner = parentWidget()) {
        QPoint corner = owner->frameGeometry().bottomRight();
        // The sign in the status bar stays in sight.
        const auto* const bar = owner->findChild<QStatusBar*>();
        if (bar != nullptr && bar->isVisible())
            corner.ry() -= bar->height() + style()->pixelMetric(QStyle::PM_TitleBarHeight);
        const QPoint origin = screen()->availableGeometry().topLeft();
        const QPoint wanted = corner - rect().bottomRight();
        move(std::max(wanted.x(), origin.x()), std::max(wanted.y(), origin.y()));
    }
    setAttribute(Qt::WA_ShowWithoutActivating, true);
    show();
    setAttribute(Qt::WA_ShowWithoutActivating, false);
}

QList<int> frmDownloads::selected() const
{
    QList<int> rows;
    const QModelIndexList indexes = m_list->selectionModel()->selectedRows();
    for (const QModelIndex& index : indexes)
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

const Download* frmDownloads::single() const
{
    const QList<int> rows = selected();
    return rows.size() == 1 ? &m_table.at(rows.constFirst()) : nullptr;
}

void frmDownloads::updateButtons()
{
    const QWidget* const before = focusWidget();
    const QList<int> rows = selected();
    m_cancel->setEnabled(isAny(rows, &isOpen));
    m_reload->setEnabled(isAny(rows, &canBeReloaded));
    updatePause(rows);
    const Download* const download = single();
    m_openFile->setEnabled(download != nullptr && download->state == DownloadState::Completed);
    m_showFolder->setEnabled(download != nullptr && download->state != DownloadState::Asking);
    m_clear->setEnabled(m_table.openCount() < m_table.rowCount());
    // A button that has done its work hands the keys back to the list, not to its neighbour.
    if (before != nullptr && !before->isEnabled())
        m_list->setFocus();
}

void frmDownloads::updatePause(const QList<int>& rows)
{
    const bool canPause = isAny(rows, &canBePaused);
    const bool canLetGoOn = !canPause && isAny(rows, &canGoOn);
    if (canPause || canLetGoOn) {
        m_pause->setText(canPause ? pauseCaption() : goOnCaption());
        m_pause->setToolTip(canPause
                                ? u"Hält die ausgewählten Downloads an; was schon da ist, bleibt"_s
                                : u"Lädt die angehaltenen Downloads weiter"_s);
    }
    m_pause->setEnabled(canPause || canLetGoOn);
}

bool frmDownloads::isAny(const QList<int>& rows, bool (*holds)(const Download&)) const
{
    return std::any_of(rows.begin(), rows.end(), [&](int row) { return holds(m_table.at(row)); });
}

void frmDownloads::forSelected(void (DownloadTable::*action)(int))
{
    const QList<int> rows = selected();
    for (const int row : rows)
        (m_table.*action)(row);
}

void frmDownloads::openFile()
{
    const Download* const download = single();
    if (download == nullptr)
        return;
    const QString path = download->path;
    const QString name = QFileInfo(path).fileName();
    if (!QFileInfo::exists(path)) {
        complain(u"Die Datei „%1“ ist nicht mehr da."_s.arg(name));
    } else if (runsWhenOpened(path)) {
        complain(u"„%1“ kann ein Programm sein und wird von hier aus nicht geöffnet. Über "
                 "„Ordner anzeigen“ kommen Sie zu der Datei."_s.arg(name));
    } else if (!m_open(QUrl::fromLocalFile(path))) {
        complain(u"Für die Datei „%1“ wurde kein Programm gefunden."_s.arg(name));
    }
}

void frmDownloads::showFolder()
{
    const Download* const download = single();
    if (download == nullptr)
        return;
    const QString folder = QFileInfo(download->path).absolutePath();
    if (!QFileInfo(folder).isDir())
        complain(u"Der Ordner „%1“ ist nicht mehr da."_s.arg(folder));
    else if (!m_open(QUrl::fromLocalFile(folder)))
        complain(u"Der Ordner „%1“ kann nicht angezeigt werden."_s.arg(folder));
}

void frmDownloads::complain(const QString& text)
{
    const DropsDisabled guard(m_shell);
    m_shell.prompt().tell(this, text, windowTitle(), Prompt::Icon::Exclamation);
}

void frmDownloads::keyPressEvent(QKeyEvent* event)
{
    if (isEscapeKey(*event))
        close();
    else if (isEnterKey(*event) && m_list->hasFocus() && m_openFile->isEnabled())
        openFile();
    else
        QDialog::keyPressEvent(event);
}
