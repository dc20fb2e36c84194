#include "engine/viewing/PageBookmarks.h"

#include "base/Shell.h"
#include "engine/page/WebEnginePage.h"
#include "pages/viewing/BookmarkBar.h"
#include "pages/viewing/PageKeys.h"

#include <QApplication>
#include <QTimer>
#include <QWebEngineScript>
#include <QWebEngineView>

PageBookmarks::PageBookmarks(Shell& shell, WebEnginePage* page, QWebEngineView* view)
    : QObject(page), m_shell(shell), m_page(page), m_view(view)
{
    connect(page, &WebEnginePage::frameReported, this, [this](const FrameReport& report) {
        if (report.isMainFrame)
            look();
    });
    // A long file is told of before it is whole.
    connect(page, &QWebEnginePage::loadFinished, this, [this] {
        if (!m_reader)
            look();
    });
    connect(page, &QWebEnginePage::renderProcessTerminated, this, &PageBookmarks::withdraw);
}

void PageBookmarks::addKeys(QWidget* window)
{
    addPageKeys(window, {Qt::SHIFT | Qt::Key_F6}, this, [this] {
        if (m_bar)
            m_bar->takeFocus();
    });
}

void PageBookmarks::look()
{
    const auto answered = [self = QPointer(this), round = ++m_round](const QVariant& answer) {
        if (self && round == self->m_round)
            self->offer(BookmarkOffer::read(answer.toString()));
    };
    m_reader.reset();
    m_page->runJavaScript(BookmarkOffer::script(), QWebEngineScript::ApplicationWorld, answered);
}

void PageBookmarks::withdraw()
{
    ++m_round;
    m_reader.reset();
    m_offer.reset();
    if (m_bar)
        m_bar->vanish();
}

void PageBookmarks::offer(const std::optional<BookmarkOffer>& offer)
{
    if (!offer || offer->document == m_declined || !m_view) {
        withdraw();
        return;
    }
    m_offer = offer;
    if (!m_bar) {
        m_bar = new BookmarkBar(m_view);
        connect(m_bar, &BookmarkBar::taken, this, &PageBookmarks::read);
        connect(m_bar, &BookmarkBar::stopped, this, &PageBookmarks::stop);
        connect(m_bar, &BookmarkBar::closed, this, [this] {
            m_declined = m_offer ? m_offer->document : -1;
            withdraw();
        });
    }
    m_bar->offer(offer->links);
}

void PageBookmarks::read()
{
    m_reader.emplace(m_page->url());
    m_bar->showProgress(0);
    ask(m_reader->firstScript());
}

void PageBookmarks::ask(const QString& script)
{
    const auto answered = [self = QPointer(this), round = ++m_round](const QVariant& answer) {
        if (self && round == self->m_round)
            self->answered(answer.toString());
    };
    m_page->runJavaScript(script, QWebEngineScript::ApplicationWorld, answered);
}

void PageBookmarks::answered(const QString& answer)
{
    if (!m_bar) { // the window has gone
        withdraw();
        return;
    }
    switch (m_reader->take(answer)) {
    case BookmarkPageReader::Progress::More:
        m_bar->showProgress(m_reader->count());
        ask(m_reader->nextScript());
        return;
    case BookmarkPageReader::Progress::Done:
        // Later, as windows open, and the user is asked.
        QTimer::singleShot(0, this, &PageBookmarks::handOver);
        return;
    case BookmarkPageReader::Progress::Refused:
        m_reader.reset();
        m_bar->showFailure();
    }
}

void PageBookmarks::stop()
{
    m_page->runJavaScript(m_reader->lastScript(), QWebEngineScript::ApplicationWorld);
    m_reader.reset();
    ++m_round;
    m_bar->offer(m_offer->links);
}

void PageBookmarks::handOver()
{
    if (!m_reader || !m_bar)
        return;
    if (QApplication::activeModalWidget() != nullptr) { // one question after the other
        QTimer::singleShot(200, this, &PageBookmarks::handOver);
        return;
    }
    const BookmarkFile file = m_reader->takeFile();
    stop();
    m_shell.importBookmarks(file);
}
