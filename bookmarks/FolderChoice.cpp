#include "bookmarks/FolderChoice.h"

#include "base/ElidedLabel.h"
#include "base/Prompt.h"
#include "base/ShownText.h"
#include "base/WindowParts.h"
#include "bookmarks/ArchiveRecords.h"
#include "bookmarks/ChosenFolder.h"
#include "bookmarks/StoredTextHint.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

FolderChoice::FolderChoice(ChosenFolder& place, const QString& first, QWidget* dialog,
                           QGridLayout& grid)
    : QObject(dialog), m_place(place)
{
    build(*dialog, grid);
    fill(first);
    connect(m_folders, &QComboBox::currentIndexChanged, this, &FolderChoice::choose);
    connect(m_newName, &QLineEdit::textChanged, this, &FolderChoice::choose);
    connect(m_new, &QPushButton::toggled, this, &FolderChoice::switchToNew);
    if (m_folders->count() == 0) {
        m_new->setChecked(true);
        m_new->setEnabled(false);
    }
    choose();
}

void FolderChoice::build(QWidget& dialog, QGridLayout& grid)
{
    m_folders = new QComboBox;
    m_folders->setObjectName(u"cboOrdner"_s);
    m_folders->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_newName = new QLineEdit;
    m_newName->setObjectName(u"txtOrdner"_s);
    m_newName->setAccessibleName(u"Name des neuen Ordners"_s);
    m_newBox = StoredTextHint::under(m_newName, dirNameWidth);
    m_newBox->hide();
    m_new = makeButton(u"NeuerOrdner"_s, u"Neuer Ordner"_s,
                       u"Legt für den Bookmark einen neuen Ordner an"_s);
    m_new->setCheckable(true);
    m_known = new ElidedLabel(u"lblBekannt"_s, &dialog);

    auto* const choice = new QHBoxLayout;
    choice->addWidget(m_folders, 1);
    choice->addWidget(m_newBox, 1);
    choice->addWidget(m_new);
    const int row = grid.rowCount();
    addLabel(grid, row, u"lblOrdner"_s, u"Ordner:"_s, m_folders);
    grid.addLayout(choice, row, 1);
    grid.addWidget(m_known, row + 1, 1);
}

void FolderChoice::fill(const QString& first)
{
    for (const ChosenFolder::Folder& folder : m_place.folders(first))
        m_folders->addItem(oneLineText(folder.name), folder.fileName);
}

void FolderChoice::followInTabOrder(QWidget* before) const
{
    for (QWidget* control : {static_cast<QWidget*>(m_folders), static_cast<QWidget*>(m_newName),
                             static_cast<QWidget*>(m_new)}) {
        QWidget::setTabOrder(before, control);
        before = control;
    }
}

void FolderChoice::setKeys(DialogKeys& keys, const DialogKeys::Action& ok,
                           const DialogKeys::Action& close)
{
    keys.set(m_folders, ok, close);
    keys.set(m_newName, ok, close);
    keys.set(
        m_new, [this] { m_new->click(); }, close);
}

void FolderChoice::watch(QLineEdit& address)
{
    const auto show = [this, &address] {
        const QString text = knownInText(m_place.foldersWith(address.text()));
        m_known->showText(text);
        m_folders->setAccessibleDescription(text);
    };
    connect(&address, &QLineEdit::textChanged, this, show);
    show();
}

bool FolderChoice::isGood(Prompt& prompt)
{
    const QString problem = m_place.nameProblem();
    if (problem.isEmpty())
        return true;
    prompt.tell(m_newName->window(), problem, u"Meldung"_s, Prompt::Icon::Exclamation);
    m_newName->setFocus();
    m_newName->selectAll();
    return false;
}

void FolderChoice::switchToNew(bool isNew)
{
    m_folders->setVisible(!isNew);
    m_newBox->setVisible(isNew);
    if (isNew) {
        m_newName->setText(m_place.nameForNew());
        m_newName->selectAll();
        m_newName->setFocus();
    } else {
        m_folders->setFocus();
    }
    choose();
}

void FolderChoice::choose()
{
    if (m_new->isChecked())
        m_place.chooseNew(m_newName->text());
    else
        m_place.choose(m_folders->currentData().toString());
}
