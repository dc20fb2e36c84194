#include "pages/viewing/BookmarkBar.h"

#include "base/DialogKeys.h"
#include "base/GlyphIcon.h"
#include "base/WindowParts.h"
#include "pages/viewing/OverlayPlacer.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int distance = 4;

QString offerText(int count)
{
    if (count == 1)
        return u"Dieses Bookmark ins Archiv übernehmen"_s;
    return u"Diese %1 Bookmarks ins Archiv übernehmen"_s.arg(QLocale().toString(count));
}

} // namespace

BookmarkBar::BookmarkBar(QWidget* view)
    : QFrame(OverlayPlacer::parentFor(view)), m_view(view), m_text(new QLabel(this)),
      m_take(makeButton(u"cmdTake"_s, {},
                        u"Liest sie und zeigt, was übernommen würde (Umschalt+F6)"_s)),
      m_progress(new QProgressBar(this)),
      m_stop(makeButton(u"cmdStop"_s, u"Abbrechen"_s, u"Liest nicht weiter (Esc)"_s)),
      m_close(new QToolButton(this))
{
    setObjectName(u"BookmarkBar"_s);
    setAccessibleName(u"Bookmarks der Seite"_s);
    setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    setAutoFillBackground(true);
    m_text->setObjectName(u"lblState"_s);
    m_text->setTextFormat(Qt::PlainText);
    m_progress->setObjectName(u"prgRead"_s);
    m_progress->setAccessibleName(u"Gelesene Bookmarks"_s);
    m_close->setObjectName(u"cmdClose"_s);
    m_close->setIcon(glyphIcon(u"x"_s));
    m_close->setAutoRaise(true);
    m_close->setFocusPolicy(Qt::StrongFocus);
    m_close->setToolTip(u"Leiste schließen (Esc)"_s);
    m_close->setAccessibleName(u"Leiste schließen"_s);
    layOut();
    hide();
    connect(m_take, &QPushButton::clicked, this, &BookmarkBar::taken);
    connect(m_stop, &QPushButton::clicked, this, &BookmarkBar::giveUp);
    connect(m_close, &QToolButton::clicked, this, &BookmarkBar::giveUp);
    m_placer = new OverlayPlacer(view, this, [this](const QRect& area) { place(area); });
}

void BookmarkBar::layOut()
{
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(distance, distance, distance, distance);
    row->setSpacing(distance);
    row->addWidget(m_text);
    row->addWidget(m_take);
    row->addWidget(m_progress, 1);
    row->addWidget(m_stop);
    row->addStretch();
    row->addWidget(m_close);
    // As narrow as a small window: the texts are cut, and the last button stays.
    m_take->setMinimumWidth(1);
    m_text->setMinimumWidth(1);
}

void BookmarkBar::place(const QRect& area)
{
    const int height = qMin(sizeHint().height(), qMax(1, area.height()));
    setGeometry(area.x(), area.bottom() + 1 - height, qMax(1, area.width()), height);
}

void BookmarkBar::appear(State state)
{
    const bool hadFocus = isAncestorOf(window()->focusWidget());
    const QWidget* const before = firstControl();
    m_state = state;
    m_text->setVisible(state == State::Failed);
    m_take->setVisible(state == State::Offering);
    m_progress->setVisible(state == State::Reading);
    m_stop->setVisible(state == State::Reading);
    m_close->setVisible(state != State::Reading);
    m_placer->place();
    show();
    raise();
    if (hadFocus && firstControl() != before)
        firstControl()->setFocus();
}

void BookmarkBar::offer(int count)
{
    m_take->setText(offerText(count));
    m_progress->setRange(0, count);
    m_progress->setValue(0);
    appear(State::Offering);
    QAccessibleEvent announcement(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&announcement);
}

void BookmarkBar::showProgress(int count)
{
    // A page may hold more of them than it said.
    m_progress->setMaximum(qMax(m_progress->maximum(), count));
    m_progress->setValue(count);
    m_progress->setFormat(
        u"%1 von %2"_s.arg(QLocale().toString(count), QLocale().toString(m_progress->maximum())));
    if (m_state != State::Reading)
        appear(State::Reading);
}

void BookmarkBar::showFailure()
{
    m_text->setText(u"Die Bookmarks dieser Seite lassen sich nicht lesen."_s);
    m_close->setAccessibleDescription(m_text->text());
    appear(State::Failed);
}

void BookmarkBar::vanish()
{
    const bool hadFocus = isAncestorOf(window()->focusWidget());
    hide();
    if (hadFocus)
        m_view->setFocus();
}

void BookmarkBar::takeFocus()
{
    if (!isHidden())
        firstControl()->setFocus(Qt::ShortcutFocusReason);
}

QWidget* BookmarkBar::firstControl() const
{
    switch (m_state) {
    case State::Offering:
        return m_take;
    case State::Reading:
        return m_stop;
    default:
        return m_close;
    }
}

void BookmarkBar::giveUp()
{
    if (m_state == State::Reading)
        emit stopped();
    else
        emit closed();
}

bool BookmarkBar::event(QEvent* event)
{
    // Escape belongs to the bar, also while the window has a use of its own for it.
    if (event->type() == QEvent::ShortcutOverride &&
        isEscapeKey(*static_cast<const QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QFrame::event(event);
}

void BookmarkBar::keyPressEvent(QKeyEvent* event)
{
    // Outside of dialogs a button is pressed by the space bar only.
    auto* const button = qobject_cast<QAbstractButton*>(focusWidget());
    if (isEscapeKey(*event))
        giveUp();
    else if (isEnterKey(*event) && button != nullptr)
        button->click();
    event->accept();
}
