#include "browser/SafetySign.h"

#include "base/GlyphIcon.h"
#include "base/ShownText.h"

#include <QApplication>
#include <QEnterEvent>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace {

/// Between the frame of the line and the sign, and around its picture, in pixels.
constexpr int margin = 2;

QString glyphOf(PageSafety::Kind kind)
{
    switch (kind) {
    case PageSafety::Kind::Secured:
        return u"safety-secured"_s;
    case PageSafety::Kind::SecuredByException:
        return u"safety-exception"_s;
    case PageSafety::Kind::NotSecured:
        return u"safety-none"_s;
    case PageSafety::Kind::Local:
        return u"safety-local"_s;
    case PageSafety::Kind::Unknown:
        break;
    }
    return u"safety-unknown"_s;
}

} // namespace

SafetySign::SafetySign(QLineEdit* line) : QToolButton(line), m_line(line)
{
    setObjectName(u"SafetySign"_s);
    setAutoRaise(true);
    setFocusPolicy(Qt::NoFocus); // a key opens what a click opens, and the line keeps the focus
    setCursor(Qt::ArrowCursor);
    line->installEventFilter(this);
    showState();
    place();
}

void SafetySign::safety(const PageSafety& safety)
{
    m_safety = safety;
    showState();
}

void SafetySign::isOfPage(bool isOfPage)
{
    if (std::exchange(m_isOfPage, isOfPage) != isOfPage)
        showState();
}

void SafetySign::showState()
{
    const PageSafety::Kind kind = m_isOfPage ? m_safety.kind : PageSafety::Kind::Unknown;
    const QString name = safetyName(kind);
    const QString sentence = m_isOfPage ? safetySentence(m_safety)
                                        : u"Was in der Zeile steht, ist noch nicht geöffnet."_s;
    setIcon(glyphIcon(glyphOf(kind)));
    setAccessibleName(u"Sicherheit der Seite: "_s + name);
    setAccessibleDescription(sentence);
    setToolTip(
        plainToolTip(u"%1. %2 Mehr zeigt ein Klick oder Alt+Eingabetaste."_s.arg(name, sentence)));
}

void SafetySign::enterEvent(QEnterEvent* event)
{
    // A click would give the focus to the line; what stands for it keeps it.
    setFocusProxy(QApplication::focusWidget());
    QToolButton::enterEvent(event);
}

bool SafetySign::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::FontChange)
        place();
    return QToolButton::eventFilter(watched, event);
}

void SafetySign::place()
{
    const int letters = QFontMetrics(m_line->font()).height();
    setIconSize({letters, letters});
    const int side = qMin(letters + 2 * margin, m_line->height());
    // A line that is hardly wider belongs to its text.
    const bool hasRoom = m_line->width() > 4 * side;
    setVisible(hasRoom);
    setGeometry(margin, (m_line->height() - side) / 2, side, side);
    m_line->setTextMargins(hasRoom ? side + margin : 0, 0, 0, 0);
}
