#include "pages/viewing/PageHint.h"

#include "pages/viewing/OverlayPlacer.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int distance = 12;
} // namespace

PageHint::PageHint(QWidget* view)
    : QLabel(OverlayPlacer::parentFor(view)),
      m_placer(new OverlayPlacer(view, this, [this](const QRect& area) { place(area); }))
{
    setObjectName(u"lblHint"_s);
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setAlignment(Qt::AlignCenter);
    setMargin(8);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setForegroundRole(QPalette::ToolTipText);
    setBackgroundRole(QPalette::ToolTipBase);
    setAutoFillBackground(true);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    m_hideTimer.setSingleShot(true);
    connect(&m_hideTimer, &QTimer::timeout, this, &QWidget::hide);
}

void PageHint::showFor(std::chrono::milliseconds time, const QString& text)
{
    setText(text);
    setAccessibleName(text);
    m_placer->place();
    show();
    raise();
    m_hideTimer.start(time);
}

void PageHint::place(const QRect& area)
{
    const int room = qMax(1, area.width() - 2 * distance);
    setWordWrap(false);
    int width = sizeHint().width();
    if (width > room) {
        setWordWrap(true);
        width = room;
    }
    const int height = hasHeightForWidth() ? heightForWidth(width) : sizeHint().height();
    setGeometry(area.x() + (area.width() - width) / 2, area.y() + distance, width, height);
}
