#include "base/FindLine.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QToolButton>

FindLine::FindLine(Findable& searched, const QString& where, QWidget* content, QWidget* window)
    : FindControls(where, window), m_searched(searched)
{
    setObjectName(QStringLiteral("FindLine"));
    setAccessibleName(where);
    layOut();
    addKeys(window);
    m_recount.setSingleShot(true);
    connect(&m_recount, &QTimer::timeout, this, &FindLine::count);
    connect(this, &FindControls::typed, this, &FindLine::search);
    connect(this, &FindControls::stepped, this, &FindLine::step);
    connect(this, &FindControls::closed, content, [content] { content->setFocus(); });
}

void FindLine::layOut()
{
    constexpr int distance = 3;
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(distance, distance, distance, distance);
    row->setSpacing(distance);
    row->addWidget(m_text, 1);
    row->addWidget(m_hits);
    row->addWidget(m_previous);
    row->addWidget(m_next);
    row->addWidget(m_close);
}

void FindLine::addKeys(QWidget* window)
{
    const auto addKey = [this, window](const QKeySequence& key, auto action) {
        connect(new QShortcut(key, window), &QShortcut::activated, this, action);
    };
    addKey(Qt::CTRL | Qt::Key_F, [this] { open(); });
    addKey(Qt::Key_F3, [this] { step(false); });
    addKey(Qt::SHIFT | Qt::Key_F3, [this] { step(true); });
}

void FindLine::open()
{
    FindControls::open();
    count();
}

void FindLine::searchedChanged()
{
    if (!isHidden())
        m_recount.start();
}

void FindLine::count()
{
    m_recount.stop();
    m_count = m_searched.find(text());
    showResult(m_count, 0);
}

void FindLine::search()
{
    m_recount.stop();
    m_count = m_searched.find(text());
    if (m_count > 0)
        m_searched.show(0);
    showResult(m_count, m_count > 0 ? 1 : 0);
}

void FindLine::step(bool backwards)
{
    if (isHidden()) {
        open();
        return;
    }
    if (m_recount.isActive())
        count();
    const int place = m_searched.beside(backwards);
    if (place < 0)
        return;
    m_searched.show(place);
    showResult(m_count, place + 1);
}
