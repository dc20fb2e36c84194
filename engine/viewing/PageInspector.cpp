#include "engine/viewing/PageInspector.h"

#include "base/Shell.h"
#include "browser/PageTexts.h"
#include "pages/viewing/PageKeys.h"

#include <QCloseEvent>
#include <QIcon>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineView>

using namespace Qt::StringLiterals;

namespace {
/// The window of the tools. They are detached when it closes, as its page is then discarded,
/// which tools that are at work refuse with a warning (seen with Qt 6.4).
class InspectorView : public QWebEngineView {
public:
    explicit InspectorView(QWebEnginePage& inspected) : m_inspected(&inspected) {}

protected:
    void closeEvent(QCloseEvent* event) override
    {
        m_inspected->setDevToolsPage(nullptr);
        QWebEngineView::closeEvent(event);
    }

private:
    QWebEnginePage* m_inspected;
};

/// The page of the tools, which report to the console what they do not find in the engine (seen
/// with Qt 6.8); that is not for the program's own output.
class InspectorPage : public QWebEnginePage {
public:
    using QWebEnginePage::QWebEnginePage;

protected:
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel /*level*/,
                                  const QString& /*message*/, int /*lineNumber*/,
                                  const QString& /*sourceId*/) override
    {
    }
};

} // namespace

PageInspector::PageInspector(Shell& shell, QWebEnginePage* page)
    : QObject(page), m_shell(shell), m_page(page)
{
    connect(page, &QWebEnginePage::titleChanged, this, &PageInspector::nameWindow);
}

PageInspector::~PageInspector()
{
    delete m_window; // the page has detached the tools itself
}

void PageInspector::toggle()
{
    if (m_window)
        m_window->close();
    else
        open();
}

void PageInspector::open()
{
    m_window = new InspectorView(*m_page);
    QWidget* const window = m_window;
    window->setObjectName(u"Inspector"_s);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowIcon(m_shell.frameIcon());
    // The tools bring a menu of their own; the toolkit's would be in English.
    window->setContextMenuPolicy(Qt::PreventContextMenu);
    m_window->setPage(new InspectorPage(m_page->profile(), window));
    // From the event loop: the tools answer to the press of their own closing button when it has
    // been handled, and must be there still (seen with Qt 6.4, which ends with a crash).
    connect(m_window->page(), &QWebEnginePage::windowCloseRequested, window, &QWidget::close,
            Qt::QueuedConnection);
    addPageKeys(window, {Qt::Key_F12, Qt::CTRL | Qt::Key_W}, this, [window] { window->close(); });
    m_page->setDevToolsPage(m_window->page());
    nameWindow();
    window->resize(900, 600);
    window->show();
}

void PageInspector::nameWindow()
{
    if (!m_window)
        return;
    const QString name = u"Entwicklerwerkzeuge: "_s + windowCaption(m_page->title());
    m_window->setWindowTitle(m_page->profile()->isOffTheRecord() ? privateCaption(name) : name);
}
