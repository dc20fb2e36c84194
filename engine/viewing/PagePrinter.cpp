#include "engine/viewing/PagePrinter.h"

#include "base/Prompt.h"
#include "engine/asking/PagePrompt.h"
#include "engine/downloads/DownloadFailures.h"
#include "engine/page/WebEnginePage.h"
#include "engine/viewing/PdfWatch.h"
#include "pages/asking/PageInput.h"
#include "pages/downloads/FileMove.h"
#include "pages/downloads/FileNames.h"
#include "pages/viewing/PageKeys.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QPageLayout>
#include <QPageRanges>
#include <QPrintDialog>
#include <QPrinter>
#include <QSaveFile>
#include <QScreen>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QTimer>
#include <QWebEngineScript>
#include <QWebEngineView>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

/// The engine paints whole pages in memory. A higher resolution could not be seen on paper.
constexpr int resolution = 300; // dots per inch

QString folderForFiles()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

/// Why `file` could not take `size` bytes. The error that it gives itself is not in German.
QString writeFailure(const QSaveFile& file, qint64 size)
{
    const QFileInfo target(file.fileName());
    const QFileInfo folder(target.absolutePath());
    const bool isBarred = !folder.isWritable() || (target.exists() && !target.isWritable());
    if (!file.isOpen())
        return failureText(isBarred ? FileMove::Denied : FileMove::Failed);
    const bool isFull = QStorageInfo(folder.filePath()).bytesAvailable() < size;
    return failureText(isFull ? FileMove::NoSpace : FileMove::Failed);
}

QString notPrinted()
{
    return u"Die Seite konnte nicht gedruckt werden."_s;
}

QString notSaved()
{
    return u"Die Seite ist nicht als PDF gespeichert."_s;
}

/// Moves a window back onto its screen when it has grown over the lower or the right edge,
/// as long as its upper left corner stays there. Belongs to the window.
class StaysOnScreen : public QObject {
public:
    explicit StaysOnScreen(QWidget* window) : QObject(window), m_window(window)
    {
        window->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        // The window manager has not answered yet: the frame has its size only later.
        if (event->type() == QEvent::Resize)
            QMetaObject::invokeMethod(
                this, [this] { moveBack(); }, Qt::QueuedConnection);
        return QObject::eventFilter(watched, event);
    }

private:
    void moveBack()
    {
        if (!m_window->isVisible())
            return;
        const QRect screen = m_window->screen()->availableGeometry();
        const QRect frame = m_window->frameGeometry();
        const int over = std::max(frame.right() - screen.right(), 0);
        const int under = std::max(frame.bottom() - screen.bottom(), 0);
        const QPoint corner(std::max(frame.left() - over, screen.left()),
                            std::max(frame.top() - under, screen.top()));
        if (over > 0 || under > 0)
            m_window->move(corner);
    }

    QWidget* m_window;
};

} // namespace

/// What a print needs until it is done.
struct PagePrinter::Job {
    explicit Job(WebEnginePage& page) : keeper(page) {}

    WebEnginePage::Keeper keeper;
    std::shared_ptr<QPrinter> printer;
    QPointer<QPrintDialog> dialog;
    /// The engine uses the printer until it says that it has finished.
    bool isOnPaper = false;
    /// It makes a PDF file of the page.
    bool isForFile = false;
    /// Has the engine begin, when the page has answered. The program crashes when the process
    /// of a page ends that has not begun to print yet (seen with Qt 6.4), as of one that hangs.
    std::function<void()> begin;
    /// The process of the page has ended, so that there is nothing to be printed.
    bool isLost = false;
};

PagePrinter::PagePrinter(Shell& shell, QWidget* window, QWebEngineView* view, PagePrompt& prompt,
                         const PageInput& input, const PdfWatch& pdf)
    : QObject(&prompt.page()), m_shell(shell), m_window(window), m_view(view), m_prompt(prompt),
      m_page(&prompt.page()), m_pdf(pdf), m_limit(prompt.session().prints)
{
    connect(&input, &PageInput::clicked, this, [this] { m_limit.clicked(); });
    addPageKeys(window, {Qt::CTRL | Qt::Key_P}, this, [this] { print(); });
    connectPage();
    connect(view, &QWebEngineView::printFinished, this, [this](bool isPrinted) {
        QTimer::singleShot(0, this, [this, isPrinted] {
            end();
            if (!isPrinted)
                tell(notPrinted());
        });
    });
}

PagePrinter::~PagePrinter() = default;

void PagePrinter::connectPage()
{
    connect(m_page, &QWebEnginePage::printRequested, this,
            [this] { QTimer::singleShot(0, this, &PagePrinter::pageAsks); });
    connect(m_page, &QWebEnginePage::renderProcessTerminated, this,
            [this] { QTimer::singleShot(0, this, &PagePrinter::pageCrashed); });
    connect(m_page, &WebEnginePage::userNavigates, this, [this] { m_limit.clicked(); });
    // No answer comes of a document that has gone.
    connect(m_page, &WebEnginePage::frameReported, this, [this](const FrameReport& report) {
        if (report.isMainFrame && m_job && m_job->begin)
            beginWhenAnswered();
    });
}

void PagePrinter::pageAsks()
{
    if (m_isWaiting || m_job) // its script may ask again and again
        return;
    m_isWaiting = true;
    m_prompt.session().askInTurn(this, [this] {
        m_isWaiting = false;
        if (m_pdf.isPdf())
            print();
        else if (m_limit.mayPrint() && begin())
            choosePrinter(AskedBy::Page);
    });
}

QWidget* PagePrinter::frame() const
{
    // Dialogs belong to the frame's window, as a page may close its own meanwhile.
    return m_window ? m_window->window() : nullptr;
}

bool PagePrinter::begin()
{
    if (!m_view || !m_window)
        return false;
    if (m_job) {
        tell(u"Diese Seite wird gerade gedruckt. Bitte warten Sie, bis der Druck beendet ist."_s);
        return false;
    }
    emit starting();
    m_job = std::make_unique<Job>(*m_page);
    return true;
}

void PagePrinter::end()
{
    m_job.reset();
}

void PagePrinter::pageCrashed()
{
    if (!m_job || m_job->isOnPaper)
        return;
    if (!m_job->dialog) {
        if (m_job->isForFile)
            m_shell.statusText(notSaved());
        end();
        return;
    }
    m_job->isLost = true;
    // If the dialog has a question open itself, that has to be answered first.
    if (QApplication::activeModalWidget() == m_job->dialog)
        m_job->dialog->reject();
}

void PagePrinter::tell(const QString& text)
{
    const PagePrompt::Open open(m_prompt);
    m_shell.prompt().tell(frame(), text, u"Meldung"_s, Prompt::Icon::Exclamation);
}

void PagePrinter::print()
{
    if (m_pdf.isPdf()) {
        if (mayDownloadPdf())
            downloadPdf();
    } else if (begin()) {
        choosePrinter(AskedBy::User);
    }
}

bool PagePrinter::mayDownloadPdf()
{
    const PagePrompt::Open open(m_prompt);
    return m_shell.prompt().askOkCancel(
        frame(),
        u"Ein PDF-Dokument kann nur mit einem PDF-Programm gedruckt werden. "
        "Soll es dafür gespeichert werden?"_s,
        u"Drucken"_s, Prompt::Icon::Question);
}

void PagePrinter::downloadPdf()
{
    m_page->download(m_page->url());
}

void PagePrinter::choosePrinter(AskedBy askedBy)
{
    m_job->printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
    m_job->printer->setResolution(resolution);
    // The dialog also proposes a file of this name.
    m_job->printer->setDocName(QFileInfo(pdfFileName(m_page->title())).completeBaseName());
    m_job->printer->setCreator(m_shell.title());
    auto* const dialog = new QPrintDialog(m_job->printer.get(), frame());
    dialog->setObjectName(u"frmPrint"_s);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QAbstractPrintDialog::PrintPageRange);
    m_job->dialog = dialog;
    new StaysOnScreen(dialog); // its options unfold downwards
    // The question is open until the dialog ends.
    const auto open = std::make_shared<PagePrompt::Open>(m_prompt);
    const auto decided = [this, askedBy, open, printer = m_job->printer](int result) {
        if (result != QDialog::Accepted && askedBy == AskedBy::Page)
            m_prompt.session().prints.cancelled();
        QTimer::singleShot(0, this, [this, result] {
            if (result == QDialog::Accepted) {
                printOnChosen();
                return;
            }
            end();
        });
    };
    connect(dialog, &QDialog::finished, this, decided);
    dialog->open();
}

void PagePrinter::printOnChosen()
{
    if (!m_job || m_job->isLost || !m_view) {
        end();
        tell(notPrinted());
        return;
    }
    QPrinter& printer = *m_job->printer;
    if (printer.outputFormat() == QPrinter::PdfFormat) {
        // On a printer the engine paints each page as a picture (seen with Qt 6.4). Its own
        // PDF files keep texts as texts.
        makePdf(printer.outputFileName(), printer.pageLayout(), printer.pageRanges());
        return;
    }
    m_job->isOnPaper = true;
    m_view->print(&printer);
}

void PagePrinter::savePdf()
{
    if (m_pdf.isPdf()) {
        downloadPdf();
        return;
    }
    if (!begin())
        return;
    const QString path = askFile();
    if (path.isEmpty() || !m_job) {
        end();
        return;
    }
    makePdf(path, QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, {}), {});
}

void PagePrinter::makePdf(const QString& path, const QPageLayout& layout, const QPageRanges& ranges)
{
    const auto written = [self = QPointer(this), path](const QByteArray& pdf) {
        if (self)
            QTimer::singleShot(0, self, [self, path, pdf] { self->writePdf(path, pdf); });
    };
    m_job->isForFile = true;
    m_job->begin = [this, written, layout, ranges] { m_page->printToPdf(written, layout, ranges); };
    m_shell.statusText(u"Die Seite wird als PDF gespeichert..."_s);
    beginWhenAnswered();
}

void PagePrinter::beginWhenAnswered()
{
    const auto answered = [self = QPointer(this)](const QVariant&) {
        if (self && self->m_job && self->m_job->begin)
            std::exchange(self->m_job->begin, {})();
    };
    m_page->runJavaScript(u"0"_s, QWebEngineScript::ApplicationWorld, answered);
}

QString PagePrinter::askFile()
{
    const PagePrompt::Open open(m_prompt);
    QString path = folderForFiles() + u'/' + pdfFileName(m_page->title());
    do {
        path = m_shell.prompt().saveFileAs(frame(), u"Als PDF speichern"_s, path);
        if (path.isEmpty() || !QFileInfo(path).suffix().isEmpty())
            return path;
        path += u".pdf"_s;
    } while (QFileInfo::exists(path)); // the user has not agreed to replace this one
    return path;
}

void PagePrinter::writePdf(const QString& path, const QByteArray& pdf)
{
    const auto job = std::exchange(m_job, nullptr); // the page lives until the user is told
    if (!job)                                       // the page has crashed, which the user knows
        return;
    QString reason = u"Die Seite lässt sich nicht drucken."_s;
    if (!pdf.isEmpty()) {
        QSaveFile file(path);
        // With a buffer a full disk would not always be noticed (seen with Qt 6.4).
        constexpr auto mode = QIODevice::WriteOnly | QIODevice::Unbuffered;
        if (file.open(mode) && file.write(pdf) == pdf.size() && file.commit()) {
            m_shell.statusText(u"Als PDF gespeichert: "_s + QDir::toNativeSeparators(path));
            return;
        }
        reason = writeFailure(file, pdf.size());
    }
    m_shell.statusText(notSaved());
    tell(u"Die Datei „%1“ konnte nicht gespeichert werden: %2"_s.arg(shortPath(path), reason));
}
