#include "pages/viewing/FindBar.h"

#include "base/DialogKeys.h"
#include "base/GlyphIcon.h"
#include "pages/viewing/OverlayPlacer.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int distance = 4;
constexpr int longestText = 1000;

/// The colour `field` mixed with red, so that texts stay legible on dark as on light.
QColor warningColour(const QColor& field)
{
    constexpr QColor red(220, 40, 40);
    return QColor((2 * field.red() + red.red()) / 3, (2 * field.green() + red.green()) / 3,
                  (2 * field.blue() + red.blue()) / 3);
}

} // namespace

FindBar::FindBar(QWidget* view)
    : QFrame(OverlayPlacer::parentFor(view)), m_text(new QLineEdit(this)), m_hits(new QLabel(this)),
      m_case(new QCheckBox(u"&Groß-/Kleinschreibung"_s, this)),
      m_previous(addButton(u"cmdPrevious"_s, u"chevron-up"_s, u"Vorherige Stelle (Umschalt+F3)"_s)),
      m_next(addButton(u"cmdNext"_s, u"chevron-down"_s, u"Nächste Stelle (F3)"_s)),
      m_close(addButton(u"cmdClose"_s, u"x"_s, u"Suche schließen (Esc)"_s))
{
    setObjectName(u"FindBar"_s);
    setAccessibleName(u"Suchen auf der Seite"_s);
    setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    setAutoFillBackground(true);
    m_text->setObjectName(u"txtFind"_s);
    m_text->setAccessibleName(u"Suchtext"_s);
    m_text->setPlaceholderText(u"Auf der Seite suchen"_s);
    m_text->setMaxLength(longestText);
    m_text->installEventFilter(this);
    m_hits->setObjectName(u"lblHits"_s);
    m_hits->setTextFormat(Qt::PlainText);
    m_case->setObjectName(u"chkCase"_s);
    m_case->setToolTip(u"Groß- und Kleinbuchstaben unterscheiden"_s);
    hide();
    layOut(view);

    connect(m_text, &QLineEdit::textChanged, this, &FindBar::textChanged);
    connect(m_case, &QCheckBox::toggled, this, &FindBar::searchAnew);
    connect(m_previous, &QToolButton::clicked, this, [this] { step(true); });
    connect(m_next, &QToolButton::clicked, this, [this] { step(false); });
    connect(m_close, &QToolButton::clicked, this, &FindBar::close);
}

QToolButton* FindBar::addButton(const QString& name, const QString& icon, const QString& text)
{
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setIcon(glyphIcon(icon));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setToolTip(text);
    button->setAccessibleName(text.section(u" ("_s, 0, 0));
    return button;
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
    // Room for the longest result, so that the bar does not move while the user types.
    m_hits->setMinimumWidth(fontMetrics().horizontalAdvance(u"9999 von 9999"_s));
    m_hits->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_placer = new OverlayPlacer(view, this, [this](const QRect& area) { place(area); });
}

void FindBar::place(const QRect& area)
{
    const QSize wanted = sizeHint();
    const int width = qMax(1, qMin(wanted.width(), area.width() - 2 * distance));
    setGeometry(area.x() + area.width() - width - distance, area.y() + distance, width,
                wanted.height());
}

QString FindBar::text() const
{
    return m_text->text();
}

bool FindBar::isCaseSensitive() const
{
    return m_case->isChecked();
}

void FindBar::open()
{
    const bool wasHidden = isHidden();
    m_placer->place();
    show();
    raise();
    m_text->setFocus(Qt::ShortcutFocusReason);
    m_text->selectAll();
    if (wasHidden)
        searchAnew();
}

void FindBar::close()
{
    if (isHidden())
        return;
    hide();
    emit find({}, false, false);
    emit closed();
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

void FindBar::showResult(int count, int active)
{
    const bool isAsked = !text().isEmpty() && count >= 0;
    QString result;
    if (isAsked)
        result = count == 0 ? u"Nicht gefunden"_s : u"%1 von %2"_s.arg(active).arg(count);
    m_hits->setText(result);
    m_text->setAccessibleDescription(result);
    markMissing(isAsked && count == 0);
}

void FindBar::markMissing(bool missing)
{
    QPalette colours = palette();
    if (missing)
        colours.setColor(QPalette::Base, warningColour(colours.color(QPalette::Base)));
    m_text->setPalette(colours);
}

bool FindBar::event(QEvent* event)
{
    // Escape closes the bar, also while the window has a use of its own for it.
    if (event->type() == QEvent::ShortcutOverride &&
        isEscapeKey(*static_cast<const QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QFrame::event(event);
}

void FindBar::keyPressEvent(QKeyEvent* event)
{
    if (isEscapeKey(*event))
        close();
    // Every other key ends here: the page below must not act on it.
    event->accept();
}

bool FindBar::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_text && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<const QKeyEvent*>(event);
        if (isEnterKey(*key)) {
            step(key->modifiers().testFlag(Qt::ShiftModifier));
            return true;
        }
    }
    return QFrame::eventFilter(watched, event);
}
