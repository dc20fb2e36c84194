#include "browser/PageSafetyDisplay.h"

#include "base/Errors.h"
#include "browser/AddressBar.h"
#include "browser/EngineControl.h"
#include "browser/SafetyPanel.h"
#include "browser/SafetySign.h"

#include <QShortcut>

PageSafetyDisplay::PageSafetyDisplay(EngineControl& engine, AddressBar& addressBar, QWidget* window)
    : QObject(window), m_engine(engine), m_addressBar(addressBar)
{
    connect(&engine, &EngineControl::SafetyChange, this, &PageSafetyDisplay::change);
    connect(&addressBar.safetySign(), &QToolButton::clicked, this, &PageSafetyDisplay::open);
    auto* const keys = new QShortcut(window);
    keys->setKeys({Qt::ALT | Qt::Key_Return, Qt::ALT | Qt::Key_Enter});
    keys->setContext(Qt::WidgetWithChildrenShortcut);
    connect(keys, &QShortcut::activated, this, &PageSafetyDisplay::open);
}

void PageSafetyDisplay::change()
{
    const PageSafety safety = m_engine.Safety();
    m_addressBar.paintWithPage();
    m_addressBar.safetySign().safety(safety);
    if (m_panel != nullptr)
        m_panel->change(safety);
}

void PageSafetyDisplay::open()
{
    if (m_panel == nullptr) {
        m_panel = new SafetyPanel(&m_addressBar.safetySign());
        connect(m_panel, &SafetyPanel::takeBackWanted, this,
                [this](const QString& answer) { m_engine.TakeBack(answer); });
    }
    if (m_addressBar.isHidden())
        emit lineWanted();
    m_panel->show(m_engine.Safety());
}
