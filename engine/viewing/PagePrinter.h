#pragma once

#include "pages/asking/PageLimits.h"

#include <QObject>
#include <QPointer>

#include <memory>

class PageInput;
class PagePrompt;
class PdfWatch;
class QPageLayout;
class QPageRanges;
class QWebEngineView;
class Shell;
class WebEnginePage;

/// Prints a page, on paper or into a PDF file; a PDF document is downloaded. One at a time; a page
/// that is closed meanwhile lives until it is printed.
class PagePrinter : public QObject {
    Q_OBJECT
public:
    /// Belongs to the page of `prompt`, which `view` in `window` shows; the key works there.
    PagePrinter(Shell& shell, QWidget* window, QWebEngineView* view, PagePrompt& prompt,
                const PageInput& input, const PdfWatch& pdf);
    ~PagePrinter() override;
    Q_DISABLE_COPY_MOVE(PagePrinter)

    /// Both return at once, but for the questions where to.
    void print();
    void savePdf();

signals:
    /// The view is about to be asked for its print: it has to show the page.
    void starting();

private:
    struct Job;
    enum class Wish { User, Page };

    void connectPage();
    void pageWants();
    bool begin();
    void choosePrinter(Wish wish);
    void printOn();
    bool wantsFile();
    void download();
    QString askFile();
    void writePdf(const QString& path, const QPageLayout& layout, const QPageRanges& ranges);
    void write(const QString& path, const QByteArray& pdf);
    void end();
    void pageDied();
    void tell(const QString& text);
    QWidget* frame() const;

    Shell& m_shell;
    QPointer<QWidget> m_window;
    QPointer<QWebEngineView> m_view;
    PagePrompt& m_prompt;
    WebEnginePage* m_page;
    const PdfWatch& m_pdf;
    PrintLimit::Page m_limit;
    /// The page's wish waits for its turn.
    bool m_isWaiting = false;
    std::unique_ptr<Job> m_job;
};
