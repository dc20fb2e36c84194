#include "base/FindControls.h"

#include "base/DialogKeys.h"
#include "base/GlyphIcon.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int longestText = 1000;

/// The colour `field` mixed with red, so that texts stay legible on dark as on light.
QColor warningColour(const QColor& field)
{
    constexpr QColor red(220, 40, 40);
    return QColor((2 * field.red() + red.red()) / 3, (2 * field.green() + red.green()) / 3,
                  (2 * field.blue() + red.blue()) / 3);
}

} // namespace

FindControls::FindControls(const QString& where, QWidget* parent)
    : QFrame(parent), m_text(new QLineEdit(this)), m_hits(new QLabel(this)),
      m_previous(addButton(u"cmdPrevious"_s, u"chevron-up"_s, u"Vorherige Stelle (Umschalt+F3)"_s)),
      m_next(addButton(u"cmdNext"_s, u"chevron-down"_s, u"Nächste Stelle (F3)"_s)),
      m_close(addButton(u"cmdClose"_s, u"x"_s, u"Suche schließen (Esc)"_s))
{
    setAutoFillBackground(true);
    m_text->setObjectName(u"txtFind"_s);
    m_text->setAccessibleName(u"Suchtext"_s);
    m_text->setPlaceholderText(where);
    m_text->setMaxLength(longestText);
    m_text->installEventFilter(this);
    m_hits->setObjectName(u"lblHits"_s);
    m_hits->setTextFormat(Qt::PlainText);
    // Room for the longest result, so that nothing moves while the user types.
    m_hits->setMinimumWidth(fontMetrics().horizontalAdvance(u"9999 von 9999"_s));
    m_hits->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    hide();
    connect(m_text, &QLineEdit::textChanged, this, &FindControls::typed);
    connect(m_previous, &QToolButton::clicked, this, [this] { emit stepped(true); });
    connect(m_next, &QToolButton::clicked, this, [this] { emit stepped(false); });
    connect(m_close, &QToolButton::clicked, this, &FindControls::close);
}

QToolButton* FindControls::addButton(const QString& name, const QString& icon, const QString& text)
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

QString FindControls::text() const
{
    return m_text->text();
}

void FindControls::open()
{
    show();
    raise();
    m_text->setFocus(Qt::ShortcutFocusReason);
    m_text->selectAll();
}

void FindControls::close()
{
    if (isHidden())
        return;
    hide();
    emit closed();
}

void FindControls::showResult(int count, int active)
{
    const bool isAsked = !text().isEmpty() && count >= 0;
    QString result;
    if (isAsked && count == 0)
        result = u"Nicht gefunden"_s;
    else if (isAsked)
        result = active == 0 ? QString::number(count) : u"%1 von %2"_s.arg(active).arg(count);
    m_hits->setText(result);
    m_text->setAccessibleDescription(result);
    markMissing(isAsked && count == 0);
}

void FindControls::markMissing(bool missing)
{
    QPalette colours = palette();
    if (missing)
        colours.setColor(QPalette::Base, warningColour(colours.color(QPalette::Base)));
    m_text->setPalette(colours);
}

bool FindControls::event(QEvent* event)
{
    // Escape closes the line, also while the window has a use of its own for it.
    if (event->type() == QEvent::ShortcutOverride &&
        isEscapeKey(*static_cast<const QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QFrame::event(event);
}

void FindControls::keyPressEvent(QKeyEvent* event)
{
    if (isEscapeKey(*event))
        close();
    // Every other key ends here: what is searched must not act on it.
    event->accept();
}

bool FindControls::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_text && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<const QKeyEvent*>(event);
        if (isEnterKey(*key)) {
            emit stepped(key->modifiers().testFlag(Qt::ShiftModifier));
            return true;
        }
    }
    return QFrame::eventFilter(watched, event);
}
