#include "bookmarks/frmBook.h"

#include "base/ElidedLabel.h"
#include "base/Guarded.h"
#include "base/Shell.h"
#include "base/Twips.h"
#include "base/WindowGuards.h"
#include "base/WindowParts.h"
#include "bookmarks/ArchiveEditor.h"
#include "bookmarks/ArchiveMenus.h"
#include "bookmarks/ArchiveView.h"
#include "bookmarks/NodeKeys.h"
#include "bookmarks/frmBMProperty.h"

#include <QCloseEvent>
#include <QIcon>
#include <QScreen>
#include <QStatusBar>

using namespace Qt::StringLiterals;

frmBook::frmBook(Shell& shell, const HistoryCollection& history, QWidget* owner)
    : QMainWindow(owner, freeWindow), m_shell(shell), m_history(history),
      m_files(shell.programFolder())
{
    setObjectName(u"frmBook"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(u"Bookmark Archiv"_s);
    setWindowIcon(shell.frameIcon());
    buildControls();
    buildMenus();
    m_commands = std::make_unique<BookCommands>(
        BookCommands::Parts{m_files, m_tree, *m_view, m_shell, this});
    connectItems();
    connectExports();
    connectKeys();
    connectMouse();
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
    setCentralWidget(m_client);
    m_view = new ArchiveView(m_tree, m_client);
    m_view->setObjectName(u"TreeView1"_s);
    m_view->setAccessibleName(windowTitle());
    auto* status = new QStatusBar(this);
    status->setObjectName(u"StatusBar1"_s);
    status->setAccessibleName(u"Status-Zeile"_s);
    m_statusPanel = new ElidedLabel(u"panel1"_s, status);
    status->addPermanentWidget(m_statusPanel, 1);
    setStatusBar(status);
    m_client->installEventFilter(this);
    m_view->setFocus();
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
    const int status = statusBar()->isHidden() ? 0 : statusBar()->height();
    const QSize scale = (m_client->size() + QSize(0, status)) * twipsPerPixel;
    if (const auto size = archiveTreeSize(scale, m_view->pos() * twipsPerPixel, toTwips(status)))
        m_view->resize(*size / twipsPerPixel);
}

bool frmBook::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_client && event->type() == QEvent::Resize)
        Form_Resize();
    return QMainWindow::eventFilter(watched, event);
}

void frmBook::GetLAndR_Indx(const QModelIndex& node, qint16& left, qint16& right)
{
    ArchiveTree::GetLAndR_Indx(node, left, right);
}

void frmBook::GetDirIdx(const ThemaCollection& folders, qint32 number, qint16& position)
{
    ::GetDirIdx(folders, number, position);
}

void frmBook::GetBookmarkIdx(const BookmarkCollection& bookmarks, qint16 number, qint16& position)
{
    ::GetBookmarkIdx(bookmarks, number, position);
}

std::shared_ptr<Thema> frmBook::selectedFolder() const
{
    return m_commands->selectedFolder();
}

std::shared_ptr<Bookmark> frmBook::selectedBookmark() const
{
    return m_commands->selectedBookmark();
}

void frmBook::AddBkmToArchive(const QString& title, const QString& url, const QString& info)
{
    m_commands->AddBkmToArchive(title, url, info);
}

void frmBook::AddDirToArchive(const QString& name)
{
    m_commands->AddDirToArchive(name);
}

void frmBook::UpdateBookmark(const std::shared_ptr<Bookmark>& bookmark, const QString& title,
                             const QString& url, const QString& info)
{
    m_commands->UpdateBookmark(bookmark, title, url, info);
}

void frmBook::UpdateDir(const std::shared_ptr<Thema>& folder, const QString& name)
{
    m_commands->UpdateDir(folder, name);
}

void frmBook::OpenAll()
{
    m_commands->OpenAll();
}

void frmBook::OpenBookmark()
{
    m_commands->OpenBookmark();
}

void frmBook::updateMenus(const QString& menu)
{
    const ArchiveSelection selection = m_commands->selection();
    if (menu == u"mn_Modify"_s || menu == u"mn_Ordner"_s)
        m_menus->set(folderMenuStates(selection));
    if (menu == u"mn_Modify"_s || menu == u"mn_Bookmark"_s)
        m_menus->set(bookmarkMenuStates(selection));
}

void frmBook::popUpMenu(const QPoint& globalPos)
{
    run([this, globalPos] { m_menus->popUp(m_commands->selection(), globalPos); });
}

void frmBook::showProperties(bool newBookmark)
{
    frmBMProperty dialog(*this, m_shell.prompt(), m_shell.frameIcon(), this);
    dialog.bNewBkm(newBookmark);
    dialog.exec();
}

void frmBook::run(const std::function<void()>& command)
{
    if (m_closing || !command || !takeLabel())
        return;
    ++m_running;
    runCommand(m_shell, this, [this, &command] {
        try {
            command();
        } catch (const Error& error) {
            tell(error.text());
        }
    });
    --m_running;
    if (m_running == 0 && m_closeLater)
        close();
}

void frmBook::tell(const QString& text)
{
    if (text.isEmpty())
        return;
    const DropsDisabled guard(m_shell);
    m_shell.prompt().tell(this, text, u"Meldung"_s, Prompt::Icon::Exclamation);
}

void frmBook::loadArchive()
{
    QString problem;
    {
        const WaitPointer wait(this);
        problem = m_files.load();
        m_tree.build(m_files.shownFolders().get());
        m_view->expand(m_tree.root());
    }
    if (problem.isEmpty())
        return;
    // Only when the window stands: it may just be being made.
    QMetaObject::invokeMethod(
        this, [this, problem] { run([this, problem] { tell(problem); }); }, Qt::QueuedConnection);
}

bool frmBook::saveArchive()
{
    QString problem;
    {
        const WaitPointer wait(this);
        problem = m_files.save();
    }
    tell(problem);
    return problem.isEmpty();
}

void frmBook::saveAndReload()
{
    // What could not be written is only here: it must not be read anew.
    if (saveArchive())
        loadArchive();
}

bool frmBook::takeLabel()
{
    m_labelRefused = false;
    m_view->commitLabel();
    return !m_labelRefused;
}

void frmBook::labelEdited(const QModelIndex& node, const QString& typed)
{
    runCommand(m_shell, this, [this, &node, &typed] {
        const DirNameCheck check = m_commands->AfterLabelEdit(node, typed);
        const QString message = dirNameMessage(check, cleanDirName(typed));
        m_labelRefused = !message.isEmpty();
        if (!m_labelRefused || m_closing)
            return;
        // The editor is still at work: it has to close before the message opens.
        const QPersistentModelIndex its = node;
        QMetaObject::invokeMethod(
            this, [this, its, message] { refuseLabel(its, message); }, Qt::QueuedConnection);
    });
}

void frmBook::refuseLabel(const QModelIndex& node, const QString& message)
{
    run([this, its = QPersistentModelIndex(node), message] {
        const DropsDisabled guard(m_shell);
        m_shell.prompt().tell(this, message, u"Meldung"_s, Prompt::Icon::Exclamation);
        m_view->StartLabelEdit(its);
    });
}

void frmBook::closeEvent(QCloseEvent* event)
{
    if (m_running > 0 || m_closing) {
        m_closeLater = !m_closing;
        event->ignore();
        return;
    }
    m_closing = true;
    takeLabel();
    runCommand(m_shell, this, [this] { askToSave(); });
    unload();
    event->accept();
}

void frmBook::askToSave()
{
    if (!m_files.isChanged())
        return;
    const DropsDisabled guard(m_shell);
    if (m_shell.prompt().askYesNo(this, u"Änderungen am Archiv speichern ?"_s, u"Meldung"_s,
                                  Prompt::Icon::Question))
        saveArchive();
}

void frmBook::unload()
{
    m_tree.build(nullptr);
    m_files.release();
    m_shell.bIsOpenBook(false);
}
