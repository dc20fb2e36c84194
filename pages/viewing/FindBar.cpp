#include "pages/viewing/FindBar.h"

#include "pages/viewing/OverlayPlacer.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {
constexpr int distance = 4;
} // namespace

FindBar::FindBar(QWidget* view)
    : FindControls(u"Auf der Seite suchen"_s, OverlayPlacer::parentFor(view)),
      m_case(new QCheckBox(u"&Groß-/Kleinschreibung"_s, this))
{
    setObjectName(u"FindBar"_s);
    setAccessibleName(u"Suchen auf der Seite"_s);
    setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    m_case->setObjectName(u"chkCase"_s);
    m_case->setToolTip(u"Groß- und Kleinbuchstaben unterscheiden"_s);
    layOut(view);

    connect(this, &FindControls::typed, this, &FindBar::textChanged);
    connect(this, &FindControls::stepped, this, &FindBar::step);
    connect(this, &FindControls::closed, this, [this] { emit find({}, false, false); });
    connect(m_case, &QCheckBox::toggled, this, &FindBar::searchAnew);
}

void FindBar::layOut(QWidget* view)
{
    // Two rows, so that the bar fits into a small window.
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(distance, distance, distance, distance);
    grid->setSpacing(distance);
    grid->addWidget(m_text, 0, 0, 1, 2);
    grid->addWidget(m_previous, 0, 2);
    grid->addWidget(m_next, 0, 3);
    grid->addWidget(m_close, 0, 4);
    grid->addWidget(m_case, 1, 0);
    grid->addWidget(m_hits, 1, 1, 1, 4, Qt::AlignRight);
    setTabOrder(m_text, m_previous);
    setTabOrder(m_previous, m_next);
    setTabOrder(m_next, m_case);
    setTabOrder(m_case, m_close);
    m_placer = new OverlayPlacer(view, this, [this](const QRect& area) { place(area); });
}

void FindBar::place(const QRect& area)
{
    const QSize wanted = sizeHint();
    const int width = qMax(1, qMin(wanted.width(), area.width() - 2 * distance));
    setGeometry(area.x() + area.width() - width - distance, area.y() + distance, width,
                wanted.height());
}

bool FindBar::isCaseSensitive() const
{
    return m_case->isChecked();
}

void FindBar::open()
{
    const bool wasHidden = isHidden();
    m_placer->place();
    FindControls::open();
    if (wasHidden)
        searchAnew();
}

void FindBar::step(bool backwards)
{
    if (!text().isEmpty())
        emit find(text(), backwards, isCaseSensitive());
}

void FindBar::textChanged()
{
    showResult(-1, 0);
    // The engine stays at the place that it shows, if that still fits the text.
    emit find(text(), false, isCaseSensitive());
}

void FindBar::searchAnew()
{
    if (isHidden())
        return;
    showResult(-1, 0);
    emit find({}, false, false);
    step(false);
}
