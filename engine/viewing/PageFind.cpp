#include "engine/viewing/PageFind.h"

#include "pages/viewing/FindBar.h"
#include "pages/viewing/OverlayPlacer.h"
#include "pages/viewing/PageKeys.h"

#include <QWebEngineFindTextResult>
#include <QWebEnginePage>
#include <QWebEngineView>

PageFind::PageFind(QWebEnginePage* page) : QObject(page), m_page(page)
{
    // The marks have gone with the old document, but the bar is still there.
    connect(page, &QWebEnginePage::loadFinished, this, [this] {
        if (m_bar)
            m_bar->searchAnew();
    });
}

void PageFind::addKeys(QWidget* window)
{
    addPageKeys(window, {Qt::CTRL | Qt::Key_F}, this, [this] { open(); });
    addPageKeys(window, {Qt::Key_F3}, this, [this] { step(false); });
    addPageKeys(window, {Qt::SHIFT | Qt::Key_F3}, this, [this] { step(true); });
}

void PageFind::open()
{
    if (FindBar* const shown = bar())
        shown->open();
}

void PageFind::close()
{
    if (m_bar && !m_bar->isHidden())
        m_bar->close();
}

FindBar* PageFind::bar()
{
    QWebEngineView* const view = QWebEngineView::forPage(m_page);
    if (!view || OverlayPlacer::isOver(m_bar, view))
        return m_bar;
    delete m_bar;
    m_bar = new FindBar(view);
    connect(m_bar, &FindBar::find, this, &PageFind::find);
    connect(m_bar, &FindBar::closed, view, [view] { view->setFocus(); });
    return m_bar;
}

void PageFind::step(bool backwards)
{
    if (m_bar && !m_bar->isHidden())
        m_bar->step(backwards);
    else
        open();
}

void PageFind::find(const QString& text, bool backwards, bool caseSensitive)
{
    QWebEnginePage::FindFlags flags;
    flags.setFlag(QWebEnginePage::FindBackward, backwards);
    flags.setFlag(QWebEnginePage::FindCaseSensitively, caseSensitive);
    const auto show = [self = QPointer(this),
                       search = ++m_lastSearch](const QWebEngineFindTextResult& result) {
        if (self && self->m_bar && search == self->m_lastSearch)
            self->m_bar->showResult(result.numberOfMatches(), result.activeMatch());
    };
    m_page->findText(text, flags, show);
}
