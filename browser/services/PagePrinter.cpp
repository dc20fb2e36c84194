#include "browser/services/PagePrinter.h"

#include "base/Prompt.h"
#include "base/StaysOnScreen.h"
#include "base/WindowGuards.h"
#include "browser/WebEnginePage.h"
#include "browser/services/PageKeys.h"
#include "browser/services/PdfFileName.h"
#include "browser/services/PdfWatch.h"

#include <QDir>
#include <QFileInfo>
#include <QPageLayout>
#include <QPageRanges>
#include <QPrintDialog>
#include <QPrinter>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTimer>
#include <QWebEngineView>

using namespace Qt::StringLiterals;

namespace {

// The engine paints whole pages in memory; more is not to be seen on paper.
constexpr int resolution = 300; // dots per inch

QString folderForFiles()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

} // namespace

/// What a print needs until it is done.
struct PagePrinter::Job {
    explicit Job(WebEnginePage& page) : keepsPage(page) {}

    WebEnginePage::Question keepsPage;
    std::unique_ptr<QPrinter> printer;
};

PagePrinter::PagePrinter(Shell& shell, QWidget* window, QWebEngineView* view, WebEnginePage* page,
                         const PdfWatch& pdf)
    : QObject(page), m_shell(shell), m_window(window), m_view(view), m_page(page), m_pdf(pdf)
{
    addPageKeys(window, {Qt::CTRL | Qt::Key_P}, this, [this] { print(); });
    connect(page, &QWebEnginePage::printRequested, this,
            [this] { QTimer::singleShot(0, this, &PagePrinter::print); });
    connect(view, &QWebEngineView::printFinished, this, [this](bool isPrinted) {
        QTimer::singleShot(0, this, [this, isPrinted] {
            end();
            if (!isPrinted)
                tell(u"Die Seite konnte nicht gedruckt werden."_s);
        });
    });
    connect(page, &QWebEnginePage::renderProcessTerminated, this,
            [this] { QTimer::singleShot(0, this, &PagePrinter::end); });
}

PagePrinter::~PagePrinter() = default;

QWidget* PagePrinter::frame() const
{
    // A dialog must not go with a window that the page closes.
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

void PagePrinter::tell(const QString& text)
{
    const WebEnginePage::Question keepsPage(*m_page);
    const DropsDisabled guard(m_shell);
    m_shell.prompt().tell(frame(), text, u"Meldung"_s, Prompt::Icon::Exclamation);
}

void PagePrinter::print()
{
    if (m_pdf.isPdf()) {
        if (wantsFile())
            download();
    } else if (begin()) {
        choosePrinter();
    }
}

bool PagePrinter::wantsFile()
{
    const WebEnginePage::Question keepsPage(*m_page);
    const DropsDisabled guard(m_shell);
    return m_shell.prompt().askOkCancel(
        frame(),
        u"Ein PDF-Dokument kann nur mit einem PDF-Programm gedruckt werden. "
        "Soll es dafür gespeichert werden?"_s,
        u"Drucken"_s, Prompt::Icon::Question);
}

void PagePrinter::download()
{
    m_page->download(m_page->url());
}

void PagePrinter::choosePrinter()
{
    m_job->printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    m_job->printer->setResolution(resolution);
    // The dialog proposes a file of this name, too.
    m_job->printer->setDocName(QFileInfo(pdfFileName(m_page->title())).completeBaseName());
    m_job->printer->setCreator(m_shell.title());
    auto* const dialog = new QPrintDialog(m_job->printer.get(), frame());
    dialog->setObjectName(u"frmPrint"_s);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QAbstractPrintDialog::PrintPageRange);
    new StaysOnScreen(dialog); // its options unfold downwards
    const auto drops = std::make_shared<DropsDisabled>(m_shell);
    connect(dialog, &QDialog::finished, this, [this, drops](int result) {
        QTimer::singleShot(0, this, [this, result] {
            if (result == QDialog::Accepted)
                printOn();
            else
                end();
        });
    });
    dialog->open();
}

void PagePrinter::printOn()
{
    if (!m_job || !m_view) {
        end();
        return;
    }
    QPrinter& printer = *m_job->printer;
    if (printer.outputFormat() == QPrinter::PdfFormat) {
        // The engine would paint a picture of each page; so texts stay texts.
        writePdf(printer.outputFileName(), printer.pageLayout(), printer.pageRanges());
        return;
    }
    m_view->print(&printer);
}

void PagePrinter::savePdf()
{
    if (m_pdf.isPdf()) {
        download();
        return;
    }
    if (!begin())
        return;
    const QString path = askFile();
    if (path.isEmpty() || !m_job) {
        end();
        return;
    }
    writePdf(path, QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, {}), {});
}

void PagePrinter::writePdf(const QString& path, const QPageLayout& layout,
                           const QPageRanges& ranges)
{
    const auto written = [self = QPointer(this), path](const QByteArray& pdf) {
        if (self)
            QTimer::singleShot(0, self, [self, path, pdf] { self->write(path, pdf); });
    };
    m_page->printToPdf(written, layout, ranges);
}

QString PagePrinter::askFile()
{
    const DropsDisabled guard(m_shell);
    QString path = folderForFiles() + u'/' + pdfFileName(m_page->title());
    do {
        path = m_shell.prompt().saveFileAs(frame(), u"Als PDF speichern"_s, path);
        if (path.isEmpty() || !QFileInfo(path).suffix().isEmpty())
            return path;
        path += u".pdf"_s;
    } while (QFileInfo::exists(path)); // nobody has been asked about that one
    return path;
}

void PagePrinter::write(const QString& path, const QByteArray& pdf)
{
    const auto job = std::exchange(m_job, nullptr); // keeps the page until the user knows
    QString reason = u"Die Seite lässt sich nicht drucken."_s;
    if (!pdf.isEmpty()) {
        QSaveFile file(path);
        if (file.open(QIODevice::WriteOnly) && file.write(pdf) == pdf.size() && file.commit())
            return;
        reason = file.errorString();
    }
    tell(u"Die Datei „%1“ konnte nicht gespeichert werden: %2"_s.arg(path, reason));
}
