#include "pages/viewing/HangNotice.h"

#include "base/DialogKeys.h"
#include "base/ShownText.h"
#include "base/WindowParts.h"
#include "pages/viewing/OverlayPlacer.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int distance = 8;
constexpr int widest = 420;
constexpr int mostNamed = 3;
constexpr int longestTitle = 50;

QString shortened(const QString& title)
{
    const QString line = oneLineText(title);
    return line.size() > longestTitle ? line.left(longestTitle) + u'…' : line;
}

QString othersText(const QStringList& titles)
{
    if (titles.isEmpty())
        return {};
    QStringList named;
    for (const QString& title : titles.first(qMin(titles.size(), mostNamed)))
        named << u'„' + shortened(title) + u'“';
    const qsizetype further = titles.size() - named.size();
    if (further > 0)
        named << u"%1 weitere"_s.arg(further);
    return u"Sie teilt sich ihren Prozess mit anderen Fenstern. „Beenden“ beendet auch: "_s +
           named.join(u", "_s) + u'.';
}

} // namespace

HangNotice::HangNotice(QWidget* view)
    : QFrame(OverlayPlacer::parentFor(view)), m_view(view),
      m_headline(new QLabel(u"Die Seite antwortet nicht"_s, this)), m_more(new QLabel(this)),
      m_wait(makeButton(u"cmdWait"_s, u"&Warten"_s, u"Wartet weiter auf die Seite"_s)),
      m_end(makeButton(u"cmdEnd"_s, u"&Beenden"_s,
                       u"Beendet die Seite; was auf ihr eingegeben ist, geht verloren"_s))
{
    setObjectName(u"HangNotice"_s);
    setAccessibleName(m_headline->text());
    setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    setAutoFillBackground(true);
    layOut();
    connect(m_wait, &QPushButton::clicked, this, &HangNotice::waitWanted);
    connect(m_end, &QPushButton::clicked, this, &HangNotice::endWanted);
    // Outside of dialogs a button is pressed by the space bar only.
    auto* const keys = new DialogKeys(this);
    for (QPushButton* const button : {m_wait, m_end})
        keys->set(
            button, [button] { button->click(); }, [this] { m_wait->click(); });
    hide();
    m_placer = new OverlayPlacer(view, this, [this](const QRect& area) { place(area); });
}

void HangNotice::layOut()
{
    QFont large = m_headline->font();
    large.setPointSizeF(large.pointSizeF() * 1.2);
    m_headline->setFont(large);
    m_headline->setWordWrap(true);
    m_more->setObjectName(u"lblMore"_s);
    m_more->setTextFormat(Qt::PlainText);
    m_more->setWordWrap(true);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_headline);
    layout->addWidget(m_more);
    auto* const row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(m_wait);
    row->addWidget(m_end);
    layout->addLayout(row);
}

void HangNotice::place(const QRect& area)
{
    const int width = qMax(1, qMin(widest, area.width() - 2 * distance));
    const int height = qMin(layout()->totalHeightForWidth(width), qMax(1, area.height()));
    setGeometry(area.x() + (area.width() - width) / 2,
                area.y() + qMin(distance, area.height() - height), width, height);
}

void HangNotice::appear(const QStringList& others)
{
    const QString text = othersText(others);
    m_more->setText(text);
    m_more->setHidden(text.isEmpty());
    m_end->setAccessibleDescription(m_headline->text() + u' ' + text);
    m_wait->setAccessibleDescription(m_headline->text());
    m_placer->place();
    show();
    raise();
    takeFocus();
}

void HangNotice::vanish()
{
    const bool hadFocus = isAncestorOf(window()->focusWidget());
    hide();
    if (hadFocus)
        m_view->setFocus();
}

void HangNotice::showFailure()
{
    m_more->setText(u"Ihr Prozess lässt sich nicht beenden."_s);
    m_more->show();
    m_placer->place();
}

void HangNotice::takeFocus()
{
    const QWidget* const focus = window()->focusWidget();
    if (isVisible() && focus != nullptr && (focus == m_view || m_view->isAncestorOf(focus)))
        m_wait->setFocus();
}
