#include "pages/viewing/frmBrowserData.h"

#include "base/DialogKeys.h"
#include "base/WindowParts.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

frmBrowserData::frmBrowserData(QWidget* parent) : QDialog(parent)
{
    setObjectName(u"frmBrowserData"_s);
    setWindowTitle(u"Browserdaten löschen"_s);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(u"Diese Daten aller Seiten löschen:"_s));
    m_cookies = addCheck(*layout, u"chkCookies"_s, u"&Cookies"_s,
                         u"Auf den meisten Seiten sind Sie danach abgemeldet"_s);
    m_cache = addCheck(*layout, u"chkCache"_s, u"&Zwischenspeicher (Cache)"_s,
                       u"Kopien von Seiten und Bildern, die wieder geladen werden können"_s);
    m_visitedLinks = addCheck(*layout, u"chkLinks"_s, u"&Besuchte Links"_s,
                              u"Links sehen danach wie noch nicht besucht aus; die Historie "
                              "bleibt"_s);
    m_permissions = addCheck(*layout, u"chkPermissions"_s, u"B&erechtigungen"_s,
                             u"Seiten müssen danach wieder fragen"_s);
    m_storage = addCheck(*layout, u"chkStorage"_s, u"&Daten im Webspeicher (beim nächsten Start)"_s,
                         u"Lokaler Speicher und Datenbanken der Seiten; sie werden entfernt, wenn "
                         "das Programm das nächste Mal startet"_s);
    addButtons(*layout);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    m_cookies->setChecked(true);
    m_cache->setChecked(true);
    setKeys();
    updateButtons();
    m_cookies->setFocus();
}

QCheckBox* frmBrowserData::addCheck(QVBoxLayout& layout, const QString& name,
                                    const QString& caption, const QString& toolTip)
{
    auto* const check = new QCheckBox(caption);
    check->setObjectName(name);
    check->setToolTip(toolTip);
    layout.addWidget(check);
    connect(check, &QCheckBox::toggled, this, &frmBrowserData::updateButtons);
    return check;
}

void frmBrowserData::addButtons(QVBoxLayout& layout)
{
    auto* const row = new QHBoxLayout;
    m_delete = makeButton(u"cmdDelete"_s, u"&Löschen"_s, u"Löscht, was oben gewählt ist"_s);
    m_quit = makeButton(u"cmdQuit"_s, u"&Abbrechen"_s, u"Löscht nichts"_s);
    row->addStretch();
    row->addWidget(m_delete);
    row->addWidget(m_quit);
    layout.addLayout(row);
    connect(m_delete, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_quit, &QPushButton::clicked, this, &QDialog::reject);
}

void frmBrowserData::setKeys()
{
    auto* const keys = new DialogKeys(this);
    const auto escape = [this] { reject(); };
    const QList<QCheckBox*> all = checks();
    for (QCheckBox* check : all)
        keys->set(check, &DialogKeys::nothing, escape);
    keys->set(
        m_delete, [this] { m_delete->click(); }, escape);
    keys->set(m_quit, escape, escape);
}

void frmBrowserData::updateButtons()
{
    const QList<QCheckBox*> all = checks();
    m_delete->setEnabled(std::any_of(all.begin(), all.end(),
                                     [](const QCheckBox* check) { return check->isChecked(); }));
}

QList<QCheckBox*> frmBrowserData::checks() const
{
    return {m_cookies, m_cache, m_visitedLinks, m_permissions, m_storage};
}

BrowserData frmBrowserData::chosen() const
{
    return {m_cookies->isChecked(), m_cache->isChecked(), m_visitedLinks->isChecked(),
            m_permissions->isChecked(), m_storage->isChecked()};
}
