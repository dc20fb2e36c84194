#include "browser/frmBrowser.h"

#include "base/DialogKeys.h"
#include "base/Twips.h"
#include "browser/AddressBar.h"
#include "browser/BrowserFrame.h"
#include "browser/BrowserLayout.h"
#include "browser/BrowserToolbar.h"

#include <QKeyEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
// Beyond this the toolkit cannot make a window.
constexpr qint64 largestSide = QWIDGETSIZE_MAX;
/// How far an arrow key moves a border, in pixels; one pixel with Ctrl.
constexpr int placingStep = 10;

int pixels(qint64 twips)
{
    return static_cast<int>(std::clamp<qint64>(twips / twipsPerPixel, 1, largestSide));
}
} // namespace

void frmBrowser::PubResize()
{
    layOut();
}

bool frmBrowser::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_client && event->type() == QEvent::Resize)
        layOut();
    if (watched == m_arrowKeys && event->type() == QEvent::FocusOut)
        endPlacing();
    return QMdiSubWindow::eventFilter(watched, event);
}

bool frmBrowser::event(QEvent* event)
{
    if (event->type() != QEvent::MouseMove && event->type() != QEvent::KeyPress)
        return QMdiSubWindow::event(event);
    const QRect before = geometry();
    const bool isHandled = QMdiSubWindow::event(event);
    if (geometry() != before && !isMaximized() && !isMinimized())
        emit placedByHand();
    return isHandled;
}

int frmBrowser::barsHeight() const
{
    return bars().shownHeight();
}

BrowserBars frmBrowser::bars() const
{
    return {m_toolbar->sizeHint().height(), m_addressBar->panelHeight(), isToolbarShown(),
            isAddressBarShown()};
}

void frmBrowser::layOut()
{
    const BrowserBars present = bars();
    const BarPlaces places = placeBars(m_client->width(), present);
    m_toolbar->setGeometry(places.toolbar);
    m_addressBar->setGeometry(places.address);
    QWidget* page = m_engine->host();
    const auto layout =
        layOutBrowser(m_client->size(), m_addressBar->addressLeft(), page->y(), present);
    if (!layout)
        return;
    m_addressBar->addressWidth(layout->addressWidth);
    page->setGeometry(layout->engine);
}

void frmBrowser::beginPlacing(Placing placing)
{
    m_placing = placing;
    m_placeBefore = geometry();
    // The toolkit passes a focus of the window itself on to what is inside. Keys that this
    // one does not know come to the window.
    m_arrowKeys = new QWidget(this);
    m_arrowKeys->setFocusPolicy(Qt::StrongFocus);
    m_arrowKeys->resize(0, 0);
    m_arrowKeys->installEventFilter(this);
    m_arrowKeys->show();
    m_arrowKeys->setFocus();
    m_frame.statusText(
        placing == Placing::Move
            ? u"Verschieben mit den Pfeiltasten; Eingabetaste übernimmt, Esc verwirft"_s
            : u"Größe ändern mit den Pfeiltasten; Eingabetaste übernimmt, Esc verwirft"_s);
}

void frmBrowser::endPlacing()
{
    if (m_placing == Placing::None)
        return;
    m_placing = Placing::None;
    m_arrowKeys->deleteLater();
    m_frame.statusText({});
}

void frmBrowser::giveUpPlacing()
{
    setGeometry(m_placeBefore);
    endPlacing();
    takeFocus();
}

void frmBrowser::keyPressEvent(QKeyEvent* event)
{
    if (m_placing == Placing::None) {
        QMdiSubWindow::keyPressEvent(event);
        return;
    }
    if (isEscapeKey(*event)) {
        giveUpPlacing();
        return;
    }
    if (isEnterKey(*event)) {
        endPlacing();
        takeFocus();
        return;
    }
    const int step = event->modifiers() & Qt::ControlModifier ? 1 : placingStep;
    setGeometry(placedByKey(geometry(), m_placing, event->key(), step, parentWidget()->size(),
                            minimumSizeHint()));
}

void frmBrowser::setWindowHeight(int content)
{
    if (isMaximized() || isMinimized())
        return;
    const qint64 twips = windowHeightFor(content, toTwips(height()), m_client->height(), bars());
    resize(width(), pixels(twips));
}

void frmBrowser::setWindowWidth(int content)
{
    if (isMaximized() || isMinimized())
        return;
    const qint64 twips = windowWidthFor(content, toTwips(width()), m_client->width());
    resize(pixels(twips), height());
}
