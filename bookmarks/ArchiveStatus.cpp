#include "bookmarks/ArchiveStatus.h"

#include "base/ElidedLabel.h"
#include "base/Errors.h"
#include "bookmarks/ArchiveEditor.h"
#include "bookmarks/ArchiveTree.h"

#include <QLabel>
#include <QMainWindow>
#include <QStatusBar>

#include <chrono>

using namespace Qt::StringLiterals;

namespace {
constexpr auto timeToRead = std::chrono::seconds(4);
}

ArchiveStatus::ArchiveStatus(const ArchiveTree& tree, const ArchiveEditor& editor,
                             QMainWindow* window)
    : QObject(window), m_tree(tree), m_editor(editor)
{
    auto* bar = new QStatusBar(window);
    bar->setObjectName(u"StatusBar1"_s);
    bar->setAccessibleName(u"Status-Zeile"_s);
    m_panel = new ElidedLabel(u"panel1"_s, bar);
    bar->addPermanentWidget(m_panel, 1);
    m_protected = new QLabel(u"Schreibgeschützt"_s, bar);
    m_protected->setObjectName(u"lblProtected"_s);
    m_protected->setToolTip(u"Das Archiv lässt sich nur ansehen: Seine Dateien dürfen nicht "
                            "geändert werden."_s);
    bar->addPermanentWidget(m_protected);
    m_protected->hide();
    window->setStatusBar(bar);

    m_reading.setSingleShot(true);
    connect(&m_reading, &QTimer::timeout, this, &ArchiveStatus::showAddress);
    connect(&tree, &ArchiveTree::dataChanged, this, &ArchiveStatus::showAddress);
    connect(&tree, &ArchiveTree::rowsRemoved, this, &ArchiveStatus::showAddress);
    connect(&tree, &ArchiveTree::modelReset, this, &ArchiveStatus::showAddress);
}

void ArchiveStatus::showNode(const QModelIndex& node)
{
    m_node = node;
    if (m_tree.kind(node) == NodeKind::Bookmark)
        m_reading.stop();
    showAddress();
}

void ArchiveStatus::showText(const QString& text)
{
    m_panel->showText(text);
    m_reading.start(timeToRead);
}

void ArchiveStatus::showProtected(bool isProtected)
{
    m_protected->setVisible(isProtected);
}

void ArchiveStatus::showAddress()
{
    if (m_reading.isActive())
        return;
    QString address;
    ignoringErrors([&] {
        if (m_tree.kind(m_node) == NodeKind::Bookmark)
            address = m_editor.resolve(m_node).bookmark->Url();
    });
    m_panel->showText(address);
}
