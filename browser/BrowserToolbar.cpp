#include "browser/BrowserToolbar.h"

#include "base/GlyphIcon.h"

#include <QAction>
#include <QEvent>
#include <QFontInfo>
#include <QMenu>
#include <QProgressBar>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

BrowserToolbar::BrowserToolbar(QWidget* parent) : QToolBar(parent)
{
    setObjectName(u"tbToolBar"_s);
    setAccessibleName(u"Toolbar"_s);
    setMovable(false);
    fitIcons();
    if (auto* more = findChild<QToolButton*>(u"qt_toolbar_ext_button"_s)) {
        more->setAccessibleName(u"Weitere Schaltflächen"_s);
        more->setToolTip(u"Weitere Schaltflächen"_s);
    }
    setContextMenuPolicy(Qt::PreventContextMenu);
    addButton(u"Back"_s, u"arrow-left"_s, u"Zurück"_s);
    addButton(u"Forward"_s, u"arrow-right"_s, u"Vorwärts"_s);
    addButton(u"Stop"_s, u"octagon-x"_s, u"Abbruch"_s);
    addButton(u"Refresh"_s, u"rotate-cw"_s, u"Aktualisieren"_s);
    m_home = addButton(u"Home"_s, u"house"_s, u"Startseite"_s);
    m_search = addButton(u"Search"_s, u"search"_s, u"Suchen"_s);
    addDriveButton();
    m_sep = addButton(u"Sep"_s, u"loader"_s, {});
    widgetForAction(m_sep)->setAccessibleName(u"In Bearbeitung"_s);

    m_progress = new QProgressBar(this);
    m_progress->setObjectName(u"ProgressBar1"_s);
    m_progress->setAccessibleName(u"Fortschritt"_s);
    m_progress->setRange(0, 9);
    m_progress->setTextVisible(false);
    m_progress->setAutoFillBackground(true); // a step paints nothing behind the bar
    m_progress->setFixedSize(90, 12);
    m_progressAction = addWidget(m_progress);
    // Takes all the room that is left: otherwise the toolbar gives some of it to the buttons,
    // and those would move by a pixel when the busy sign comes or goes.
    auto* const rest = new QWidget(this);
    rest->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(rest);
    showBusy(false);
}

void BrowserToolbar::changeEvent(QEvent* event)
{
    QToolBar::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fitIcons();
}

void BrowserToolbar::fitIcons()
{
    constexpr int least = 20;
    const int side = std::max(least, QFontInfo(font()).pixelSize() * 3 / 2);
    setIconSize(QSize(side, side));
}

QAction* BrowserToolbar::addButton(const QString& key, const QString& icon, const QString& toolTip)
{
    QAction* action = addAction(glyphIcon(icon), toolTip);
    action->setObjectName(key);
    action->setToolTip(toolTip);
    if (QWidget* button = widgetForAction(action)) {
        button->setObjectName(key);
        button->setFocusPolicy(Qt::TabFocus);
        button->setAccessibleName(toolTip);
    }
    connect(action, &QAction::triggered, this, [this, key] { emit buttonClicked(key); });
    return action;
}

void BrowserToolbar::addDriveButton()
{
    QAction* drive = addButton(u"Drive"_s, u"hard-drive"_s, u"Laufwerke"_s);
    m_drives = new QMenu(this);
    m_drives->setObjectName(u"Drives"_s);
    m_drives->setAccessibleName(u"Laufwerke"_s);
    auto* button = qobject_cast<QToolButton*>(widgetForAction(drive));
    button->setMenu(m_drives);
    button->setPopupMode(QToolButton::InstantPopup);
    // The press opens the menu in place of the click; for the window it is one.
    connect(m_drives, &QMenu::aboutToShow, drive, &QAction::trigger);
}

void BrowserToolbar::fillDrives(const QStringList& entries)
{
    const auto add = [this](const QString& text) {
        QString caption = text;
        QAction* entry = m_drives->addAction(caption.replace(u'&', u"&&"_s));
        connect(entry, &QAction::triggered, this, [this, text] { emit driveClicked(text); });
    };
    for (qsizetype i = 0; i < entries.size(); ++i) {
        add(entries[i].toUpper());
        if (i + 1 < entries.size())
            add(u"-"_s);
    }
}

void BrowserToolbar::homeToolTip(const QString& text)
{
    m_home->setToolTip(text);
}

void BrowserToolbar::searchToolTip(const QString& text)
{
    m_search->setToolTip(text);
}

void BrowserToolbar::showBusy(bool busy)
{
    m_sep->setVisible(busy);
    m_progressAction->setVisible(busy);
}
