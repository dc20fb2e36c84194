#include "bookmarks/frmBook.h"

#include "base/RunCommand.h"
#include "base/Shell.h"
#include "base/WindowParts.h"
#include "bookmarks/ArchiveDrops.h"
#include "bookmarks/ArchiveImport.h"
#include "bookmarks/ArchiveMenus.h"
#include "bookmarks/ArchiveRecords.h"
#include "bookmarks/ArchiveStatus.h"
#include "bookmarks/ArchiveView.h"
#include "bookmarks/LabelEditing.h"
#include "bookmarks/StepKeys.h"
#include "bookmarks/StoredText.h"
#include "bookmarks/TreeFind.h"
#include "bookmarks/frmBMProperty.h"

#include <QCloseEvent>
#include <QIcon>
#include <QScreen>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

frmBook::frmBook(Shell& shell, const HistoryCollection& history, QWidget* owner)
    : QMainWindow(owner, freeWindow), m_shell(shell), m_runner(shell, *this),
      m_files(shell.programFolder(), shell.dataFolder()), m_editor(m_files, m_tree),
      m_export(m_files, shell, this)
{
    setObjectName(u"frmBook"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(u"Bookmark Archiv"_s);
    setWindowIcon(shell.frameIcon());
    buildControls();
    buildCommands();
    buildLabels();
    connectView(history);
    m_runner.reportTo([this] { tellChange(); });
    m_editor.steps().reportTo([this] { tellChange(); });
    resize(firstSize());
    m_shell.bIsOpenBook(true);
    loadArchive();
}

frmBook::~frmBook()
{
    delete m_view; // before the tree that it shows
}

void frmBook::buildControls()
{
    m_client = new QWidget(this);
    m_view = new ArchiveView(m_tree, m_shell.icons(), m_client);
    m_view->setObjectName(u"TreeView1"_s);
    m_view->setAccessibleName(windowTitle());
    m_status = new ArchiveStatus(m_tree, m_editor, this);
    m_client->installEventFilter(this);
    buildFindLine();
    m_view->setFocus();
    m_menus = new ArchiveMenus(this, *m_view);
    connect(m_menus, &ArchiveMenus::chosen, this,
            [this](const QString& item) { m_runner.run(m_commands.value(item)); });
}

void frmBook::buildFindLine()
{
    m_find = std::make_unique<TreeFind>(*m_view);
    auto* const line = new FindLine(*m_find, u"Im Archiv suchen"_s, m_view, this);
    connect(&m_find->archive(), &ArchiveFind::changed, line, &FindLine::searchedChanged);
    auto* const all = new QWidget(this);
    auto* const column = new QVBoxLayout(all);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_client, 1);
    column->addWidget(line);
    setCentralWidget(all);
}

void frmBook::buildCommands()
{
    const auto exportFolder = [this](const QString& kind) {
        return [this, kind] { m_export.ExportFolder(kind, selectedFolder()); };
    };
    const auto exportArchive = [this](const QString& kind) {
        return [this, kind] { m_export.ExportArchive(kind); };
    };
    m_commands = {
        {u"mn_Laden"_s, [this] { loadArchive(); }},
        // What could not be written exists only in memory: a load would throw it away.
        {u"mn_Speichern"_s,
         [this] {
             if (!saveArchive())
                 return;
             loadArchive();
             m_status->showText(u"Gespeichert"_s);
         }},
        {u"mn_ExpTxt"_s, exportArchive(u"Text"_s)},
        {u"mn_ExpHtml"_s, exportArchive({})},
        {u"mn_ExpNetscapeHtml"_s, exportArchive(u"Netscape"_s)},
        {u"mn_Schließen"_s, [this] { close(); }},
        {u"mn_AddOrdner"_s, [this] { AddDirToArchive(m_editor.GetNewDirName()); }},
        {u"mn_DelOrdner"_s, [this] { deleteFolder(); }},
        {u"mn_AttrOrdner"_s, [this] { renameFolder(); }},
        {u"mn_expdetText"_s, exportFolder(u"Text"_s)},
        {u"mn_expdetHtml"_s, exportFolder({})},
        {u"mn_expdetNetscapeHtml"_s, exportFolder(u"Netscape"_s)},
        {u"mn_OpenAllBkm"_s, [this] { OpenAll(); }},
        {u"mn_OpenBkm"_s, [this] { OpenBookmark(); }},
        {u"mn_Hinzufügen"_s, [this] { newBookmark(); }},
        {u"mn_Loeschen"_s, [this] { deleteBookmark(); }},
        {u"mn_Eigenschaften"_s, [this] { editBookmark(); }},
    };
}

void frmBook::buildLabels()
{
    m_labels = std::make_unique<LabelEditing>(m_shell, *m_view, m_tree, m_editor);
    m_runner.prepareBy([this] { return m_labels->commit(); });
    connect(m_view, &ArchiveView::labelTyped, m_status, [this](const QString& text) {
        m_status->showText(lossesOf(text, dirNameWidth).replace(u'\n', u' '));
    });
    connect(m_labels.get(), &LabelEditing::refused, this,
            [this](const QPersistentModelIndex& node, const QString& message) {
                m_runner.run([this, &node, &message] {
                    m_runner.tell(message);
                    m_view->StartLabelEdit(node);
                });
            });
}

void frmBook::connectView(const HistoryCollection& history)
{
    connect(m_view, &ArchiveView::escapePressed, this, &frmBook::close);
    connect(m_view, &ArchiveView::renamePressed, this, runItem(u"mn_AttrOrdner"_s));
    connect(m_view, &ArchiveView::savePressed, this, runItem(u"mn_Speichern"_s));
    connect(m_view, &ArchiveView::deletePressed, this, runItem(u"mn_Loeschen"_s));
    connect(m_view, &ArchiveView::openWanted, this, runItem(u"mn_OpenBkm"_s));
    connect(m_view, &ArchiveView::nodeReached, m_status, &ArchiveStatus::showNode);
    new StepKeys(m_editor.steps(), m_runner, *m_view, *m_status);
    connect(m_view, &ArchiveView::menuWanted, this, [this](const QPoint& place) {
        m_runner.run([this, place] { m_menus->popUp(place); });
    });
    connect(m_view, &ArchiveView::wholeMenuWanted, this, [this](const QPoint& place) {
        m_runner.run([this, place] { m_menus->popUpWhole(place); });
    });
    const auto* drops = new ArchiveDrops(*m_view, history);
    connect(drops, &ArchiveDrops::bookmarkDropped, this,
            [this](const QString& title, const QString& address) {
                m_runner.run([this, &title, &address] { AddBkmToArchive(title, address, {}); });
            });
}

QSize frmBook::firstSize() const
{
    constexpr int columns = 60;
    constexpr int rows = 24;
    const QSize wanted(columns * fontMetrics().averageCharWidth(), rows * fontMetrics().height());
    return wanted.boundedTo(screen()->availableSize() * 9 / 10);
}

void frmBook::Form_Resize()
{
    const QSize size = m_client->size() - QSize(m_view->x(), m_view->y());
    if (size.isValid()) // else the window is too small, and the tree keeps the size it has
        m_view->resize(size);
}

bool frmBook::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_client && event->type() == QEvent::Resize)
        Form_Resize();
    return QMainWindow::eventFilter(watched, event);
}

CommandRunner::Command frmBook::runItem(const QString& item)
{
    return [this, item] { m_runner.run(m_commands.value(item)); };
}

void frmBook::loadArchive()
{
    QString problem;
    {
        const WaitPointer wait(this);
        problem = m_editor.load();
        m_view->expand(m_tree.root());
    }
    m_status->showProtected(m_files.isWriteProtected());
    if (problem.isEmpty())
        return;
    // Later, as the window may just be being made and has to be there for the message.
    QMetaObject::invokeMethod(
        this, [this, problem] { m_runner.run([this, problem] { m_runner.tell(problem); }); },
        Qt::QueuedConnection);
}

QString frmBook::written()
{
    QString problem;
    {
        const WaitPointer wait(this);
        problem = m_editor.save();
    }
    m_runner.tell(m_files.takeCopyProblem());
    return problem;
}

bool frmBook::saveArchive()
{
    const QString problem = written();
    m_runner.tell(problem);
    return problem.isEmpty();
}

std::shared_ptr<Thema> frmBook::selectedFolder() const
{
    const QModelIndex node = m_view->selectedNode();
    const NodeKind kind = m_tree.kind(node);
    const bool below = kind == NodeKind::Folder || kind == NodeKind::Bookmark;
    return below ? m_editor.resolve(node).folder : nullptr;
}

std::shared_ptr<Bookmark> frmBook::selectedBookmark() const
{
    const QModelIndex node = m_view->selectedNode();
    return m_tree.kind(node) == NodeKind::Bookmark ? m_editor.resolve(node).bookmark : nullptr;
}

void frmBook::AddDirToArchive(const QString& name)
{
    const QModelIndex selected = m_view->selectedNode();
    const QModelIndex reference = selected.isValid() ? selected : m_tree.root();
    const QModelIndex node = m_editor.addFolder(reference, name);
    if (!node.isValid())
        return;
    m_view->expand(m_tree.root());
    m_view->StartLabelEdit(node);
}

void frmBook::UpdateDir(const std::shared_ptr<Thema>& folder, const QString& name)
{
    m_editor.renameFolder(folder, name);
}

void frmBook::renameFolder()
{
    const QModelIndex node = m_view->selectedNode();
    if (m_tree.kind(node) != NodeKind::Folder)
        return;
    ArchiveFiles::checkReadable(*m_editor.resolve(node).folder);
    m_view->StartLabelEdit(node);
}

void frmBook::deleteFolder()
{
    const QPersistentModelIndex node = m_view->selectedNode();
    if (m_tree.kind(node) != NodeKind::Folder)
        return;
    m_files.checkReadable();
    const auto folder = m_editor.resolve(node).folder;
    ArchiveFiles::checkReadable(*folder);
    // The rest of the program goes on while the question is open: the node may be gone.
    if (!confirmed(*folder) || !node.isValid())
        return;
    m_editor.removeFolder(node);
    m_runner.tell(m_files.takeCopyProblem());
}

bool frmBook::confirmed(const Thema& folder)
{
    if (!folder.colBookmark() || folder.colBookmark()->IsEmpty())
        return true;
    const DropsDisabled guard(m_shell);
    return m_shell.prompt().askOkCancel(this, u"Der Ordner ist nicht leer, trotzdem löschen ?"_s,
                                        u"Meldung"_s, Prompt::Icon::Question);
}

void frmBook::newBookmark()
{
    const auto folder = selectedFolder();
    if (!folder)
        return;
    ArchiveFiles::checkReadable(*folder);
    showProperties(true);
}

void frmBook::editBookmark()
{
    if (selectedBookmark())
        showProperties(false);
}

void frmBook::showProperties(bool newBookmark)
{
    const DropsDisabled guard(m_shell);
    frmBMProperty dialog(*this, m_shell.prompt(), m_shell.frameIcon(), this);
    dialog.bNewBkm(newBookmark);
    dialog.exec();
}

void frmBook::AddBkmToArchive(const QString& title, const QString& url, const QString& info)
{
    showAdded(m_editor.addBookmarks(m_view->selectedNode(), {{title, url, info}}));
}

void frmBook::showAdded(const QModelIndex& bookmark)
{
    m_view->reachNode(bookmark);
    m_status->showText(addedText(m_tree.folder(bookmark)->DirName()));
}

void frmBook::UpdateBookmark(const std::shared_ptr<Bookmark>& bookmark, const QString& title,
                             const QString& url, const QString& info)
{
    if (bookmark)
        m_editor.changeBookmark(m_view->selectedNode(), bookmark, {title, url, info});
    else
        AddBkmToArchive(title, url, info);
}

void frmBook::deleteBookmark()
{
    const QModelIndex node = m_view->selectedNode();
    if (m_tree.kind(node) == NodeKind::Bookmark)
        m_editor.removeBookmark(node);
}

void frmBook::importBookmarks(const BookmarkFile& file)
{
    m_runner.run(
        [this, &file] { ArchiveImport(m_files, m_editor, *m_view, m_shell, this).ask(file); });
}

void frmBook::OpenAll()
{
    if (m_tree.kind(m_view->selectedNode()) != NodeKind::Folder)
        return;
    const auto bookmarks = selectedFolder()->colBookmark();
    if (!bookmarks)
        return;
    // A copy: while a window opens, the archive may change.
    const BookmarkCollection all = *bookmarks;
    for (const auto& bookmark : all)
        m_shell.VisitUrl(bookmark->Url());
}

void frmBook::OpenBookmark()
{
    if (const auto bookmark = selectedBookmark())
        m_shell.VisitUrl(bookmark->Url());
}

void frmBook::changeFromOutside(const std::function<void(const ArchiveParts&)>& change)
{
    m_runner.run([this, &change] {
        m_files.checkReadable();
        // The tree of a new user is empty until the default archive is loaded.
        if (!m_files.shownFolders() && !m_tree.hasChildren(m_tree.root()))
            loadArchive();
        change({m_files, m_tree, m_editor});
    });
}

void frmBook::closeEvent(QCloseEvent* event)
{
    if (!m_runner.startClosing()) {
        event->ignore();
        return;
    }
    m_labels->commit();
    bool mayClose = false;
    runCommand(m_shell, this, [this, &mayClose] { mayClose = askToSave(); });
    if (!mayClose) {
        m_runner.stopClosing();
        event->ignore();
        return;
    }
    m_tree.build(nullptr);
    m_files.release();
    m_shell.bIsOpenBook(false);
    m_shell.wouldLose(this, {});
    event->accept();
}

void frmBook::tellChange()
{
    m_shell.wouldLose(this, m_files.isChanged() ? u"Änderungen am Archiv sind nicht gespeichert."_s
                                                : QString());
}

bool frmBook::askToSave()
{
    if (!m_files.isChanged())
        return true;
    setWindowState(windowState() & ~Qt::WindowMinimized); // what is asked about is to be seen
    const DropsDisabled guard(m_shell);
    if (!m_shell.prompt().askYesNo(this, u"Änderungen am Archiv speichern ?"_s, u"Meldung"_s,
                                   Prompt::Icon::Question))
        return true;
    const QString problem = written();
    return problem.isEmpty() || mayLose(problem);
}

bool frmBook::mayLose(const QString& problem)
{
    const QString text = problem +
                         u"\n\nDie Änderungen gibt es nur noch in diesem Fenster. Wird es "
                         "trotzdem geschlossen, sind sie verloren."_s;
    return m_shell.prompt()
        .ask(this, {.title = u"Meldung"_s,
                    .text = text,
                    .accept = u"Trotzdem schließen"_s,
                    .refuse = u"Zurück zum Archiv"_s,
                    .isRisky = true})
        .isAccepted;
}
