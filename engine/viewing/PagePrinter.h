#pragma once

#include "pages/asking/PageLimits.h"

#include <QObject>
#include <QPointer>

#include <memory>

class PagePrompt;
class PageInput;
class PdfWatch;
class QPageLayout;
class QPageRanges;
class QWebEngineView;
class Shell;
class WebEnginePage;

/// Prints a page, on paper or into a PDF file. A PDF document is downloaded instead. A page is
/// printed once at a time; if its window is closed meanwhile it lives on until it is printed.
class PagePrinter : public QObject {
    Q_OBJECT
public:
    /// Belongs to the page of `prompt`, which `view` in `window` shows; the key works there.
    PagePrinter(Shell& shell, QWidget* window, QWebEngineView* view, PagePrompt& prompt,
                const PageInput& input, const PdfWatch& pdf);
    ~PagePrinter() override;
    Q_DISABLE_COPY_MOVE(PagePrinter)

    /// Both return before the page is printed, `savePdf` when the user has named the file.
    void print();
    void savePdf();

signals:
    /// A print begins: the view has to show the page, so a full screen has to end.
    void starting();

private:
    struct Job;
    enum class AskedBy { User, Page };

    void connectPage();
    void pageAsks();
    bool begin();
    void choosePrinter(AskedBy askedBy);
    void printOnChosen();
    bool mayDownloadPdf();
    void downloadPdf();
    QString askFile();
    void makePdf(const QString& path, const QPageLayout& layout, const QPageRanges& ranges);
    void beginWhenAnswered();
    void writePdf(const QString& path, const QByteArray& pdf);
    void end();
    void pageCrashed();
    void tell(const QString& text);
    QWidget* frame() const;

    Shell& m_shell;
    QPointer<QWidget> m_window;
    QPointer<QWebEngineView> m_view;
    PagePrompt& m_prompt;
    WebEnginePage* m_page;
    const PdfWatch& m_pdf;
    PrintLimit::Page m_limit;
    /// The page has asked for a print and waits for its turn.
    bool m_isWaiting = false;
    std::unique_ptr<Job> m_job;
};
