#include "engine/viewing/PageZoom.h"

#include "engine/page/WebEnginePage.h"
#include "engine/viewing/PdfWatch.h"
#include "pages/viewing/OverlayPlacer.h"
#include "pages/viewing/PageHint.h"
#include "pages/viewing/PageKeys.h"
#include "pages/viewing/SiteZooms.h"
#include "pages/viewing/ZoomSteps.h"

#include <QChildEvent>
#include <QCoreApplication>
#include <QWebEngineHistory>
#include <QWebEnginePage>
#include <QWebEngineView>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace {
constexpr std::chrono::milliseconds hintTime(1500);
} // namespace

PageZoom::PageZoom(WebEnginePage* page, const PdfWatch& pdf, SiteZooms& zooms)
    : QObject(page), m_page(page), m_pdf(pdf), m_zooms(&zooms)
{
    // The engine takes the size of the page before along, or drops it (seen with Qt 6.4). The
    // address changes when the page has come and has not been painted yet.
    connect(page, &QWebEnginePage::urlChanged, this, [this] { apply(site()); });
    connect(page, &QWebEnginePage::loadFinished, this, [this] { apply(site()); });
    connect(&zooms, &SiteZooms::changed, this, [this](const QString& site) {
        if (site == this->site())
            apply(site);
    });
}

void PageZoom::attachTo(QWidget* window, QWebEngineView* view)
{
    addPageKeys(window, {Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal}, this,
                [this] { zoomIn(); });
    addPageKeys(window, {Qt::CTRL | Qt::Key_Minus}, this, [this] { zoomOut(); });
    addPageKeys(window, {Qt::CTRL | Qt::Key_0}, this, [this] { reset(); });
    // The wheel's events go to a widget that the engine puts into the view, and replaces.
    view->installEventFilter(this);
    for (QObject* child : view->children())
        filterWheel(child);
}

void PageZoom::filterWheel(QObject* child)
{
    if (child->isWidgetType())
        child->installEventFilter(this);
}

bool PageZoom::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ChildAdded) {
        filterWheel(static_cast<QChildEvent*>(event)->child());
    } else if (event->type() == QEvent::Wheel) {
        const auto& wheel = *static_cast<const QWheelEvent*>(event);
        if (wheel.modifiers().testFlag(Qt::ControlModifier) && !m_pdf.isPdf()) {
            turnWheel(wheel);
            return true; // the engine would zoom in steps of its own
        }
    }
    return QObject::eventFilter(watched, event);
}

void PageZoom::turnWheel(const QWheelEvent& event)
{
    m_turned += event.angleDelta().y();
    const int steps = m_turned / QWheelEvent::DefaultDeltasPerStep;
    m_turned %= QWheelEvent::DefaultDeltasPerStep;
    if (steps != 0)
        step(steps);
}

void PageZoom::step(int turns)
{
    if (m_pdf.isPdf())
        zoomPdf(turns);
    else
        zoom(zoomedBy(percentOf(site()), turns));
}

/// Hands the wish to the engine's viewer as turns of the wheel, which it zooms by itself.
void PageZoom::zoomPdf(int turns)
{
    const QWebEngineView* const view = QWebEngineView::forPage(m_page);
    QWidget* const picture = view == nullptr ? nullptr : view->focusProxy();
    if (picture == nullptr)
        return;
    const QPointF centre = picture->rect().center();
    QWheelEvent event(centre, picture->mapToGlobal(centre), {},
                      {0, turns * QWheelEvent::DefaultDeltasPerStep}, Qt::NoButton,
                      Qt::ControlModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(picture, &event);
}

bool PageZoom::canReset() const
{
    return !m_pdf.isPdf();
}

void PageZoom::reset()
{
    if (canReset())
        zoom(normalZoom);
}

void PageZoom::zoom(int percent)
{
    if (m_zooms)
        m_zooms->set(site(), percent);
    QWebEngineView* const view = QWebEngineView::forPage(m_page);
    if (view == nullptr)
        return;
    if (!OverlayPlacer::isOver(m_hint, view)) {
        delete m_hint;
        m_hint = new PageHint(view);
    }
    m_hint->showFor(hintTime, u"%1 %"_s.arg(percent));
}

QString PageZoom::site() const
{
    // The address of the page may be that of a page on its way.
    const QUrl shown = m_page->history()->currentItem().url();
    return SiteZooms::siteOf(shown.isEmpty() ? m_page->url() : shown);
}

int PageZoom::percentOf(const QString& site) const
{
    return m_zooms ? m_zooms->percentOf(site) : normalZoom;
}

void PageZoom::apply(const QString& site)
{
    // Also where it seems to be the one already: what the engine says of itself need not be what
    // the process that draws the page has been told.
    m_page->setZoomFactor(percentOf(site) / 100.0);
}
