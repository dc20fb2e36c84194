#include "app/frmEinstell.h"

#include "base/DialogKeys.h"
#include "base/Prefer.h"
#include "base/RunCommand.h"
#include "base/Shell.h"
#include "base/WholeNumber.h"
#include "base/WindowParts.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <limits>
#include <type_traits>

namespace {
template <typename Control>
Control* named(const char16_t* name, const QString& caption = {})
{
    auto* control = new Control;
    control->setObjectName(QString::fromUtf16(name));
    if constexpr (std::is_base_of_v<QAbstractButton, Control>)
        control->setText(caption);
    return control;
}
} // namespace

frmEinstell::frmEinstell(Shell& shell, QWidget* parent) : QDialog(parent), m_shell(shell)
{
    setObjectName(QStringLiteral("frmEinstell"));
    setWindowTitle(QStringLiteral("Einstellungen"));
    setWindowIcon(shell.frameIcon());
    buildControls();
    setTabs();
    setKeys();
    connect(m_save, &QPushButton::clicked, this, &frmEinstell::Save_Click);
    connect(m_quit, &QPushButton::clicked, this, &frmEinstell::Quit_Click);
    connect(m_standard, &QPushButton::clicked, this, &frmEinstell::Standard_Click);
    connect(m_command2, &QPushButton::clicked, this, &frmEinstell::Command2_Click);
    Form_Load();
    m_text1->setFocus();
}

void frmEinstell::buildControls()
{
    auto* grid = new QGridLayout;
    addTexts(*grid);
    addChecks(*grid);
    grid->setColumnStretch(2, 1);

    m_standard = makeButton(QStringLiteral("Standard"), QStringLiteral("&Standard"));
    m_save = makeButton(QStringLiteral("Save"), QStringLiteral("OK"));
    m_quit = makeButton(QStringLiteral("Quit"), QStringLiteral("Abbruch"));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_standard);
    buttons->addStretch();
    buttons->addWidget(m_save);
    buttons->addWidget(m_quit);

    auto* all = new QVBoxLayout(this);
    all->addLayout(grid);
    all->addStretch();
    all->addSpacing(all->spacing());
    all->addLayout(buttons);
}

void frmEinstell::addTexts(QGridLayout& grid)
{
    m_text1 = named<QLineEdit>(u"Text1");
    m_text2 = named<QLineEdit>(u"Text2");
    m_text3 = named<QLineEdit>(u"Text3");
    m_text1->setMinimumWidth(50 * fontMetrics().averageCharWidth());
    m_command2 = makeButton(QStringLiteral("Command2"), QStringLiteral("Suchen..."));
    addLabel(grid, 0, QStringLiteral("Label1"), QStringLiteral("Startadresse:"), m_text1);
    grid.addWidget(m_text1, 0, 1, 1, 3);
    addLabel(grid, 1, QStringLiteral("Label2"), QStringLiteral("Suchmaschine:"), m_text2);
    grid.addWidget(m_text2, 1, 1, 1, 3);
    addLabel(grid, 2, QStringLiteral("Label6"), QStringLiteral("E-Mail Anwendung:"), m_text3);
    grid.addWidget(m_text3, 2, 1, 1, 2);
    grid.addWidget(m_command2, 2, 3);
}

void frmEinstell::addChecks(QGridLayout& grid)
{
    m_combo1 = named<QComboBox>(u"Combo1");
    m_combo1->addItems({QStringLiteral("10"), QStringLiteral("50"), QStringLiteral("100")});
    m_combo1->setEditable(true);
    m_combo1->setInsertPolicy(QComboBox::NoInsert);
    // A typed 1 is to stay a 1 and not to become the first item.
    m_combo1->setCompleter(nullptr);
    m_combo1->setMinimumContentsLength(6); // the longest number that it takes
    m_combo1->lineEdit()->setAccessibleName(QStringLiteral("Historie"));
    addLabel(grid, 3, QStringLiteral("Label4"), QStringLiteral("Historie:"), m_combo1);
    grid.addWidget(m_combo1, 3, 1);
    auto* unit = new QLabel(QStringLiteral("(Einträge maximal)"));
    unit->setObjectName(QStringLiteral("Label5"));
    grid.addWidget(unit, 3, 2);

    m_check2 = named<QCheckBox>(u"Check2", QStringLiteral("Browser-Fenster öffnen."));
    m_check1 = named<QCheckBox>(u"Check1", QStringLiteral("Status-Zeile anzeigen."));
    m_check3 = named<QCheckBox>(u"Check3", QStringLiteral("Adresszeile einblenden."));
    m_check4 = named<QCheckBox>(u"Check4", QStringLiteral("Toolbar einblenden."));
    addLabel(grid, 4, QStringLiteral("Label3"), QStringLiteral("Nach Programmstart:"), m_check2);
    addLabel(grid, 6, QStringLiteral("Label7"), QStringLiteral("Browser-Fenster:"), m_check3);
    int row = 4;
    for (QCheckBox* check : {m_check2, m_check1, m_check3, m_check4})
        grid.addWidget(check, row++, 1, 1, 3, Qt::AlignLeft);
}

void frmEinstell::setTabs()
{
    const QWidgetList order{m_text1,  m_text2,  m_text3,  m_command2, m_combo1, m_check2,
                            m_check1, m_check3, m_check4, m_standard, m_save,   m_quit};
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void frmEinstell::setKeys()
{
    auto* keys = new DialogKeys(this);
    const auto save = [this] { Save_Click(); };
    const auto quit = [this] { Quit_Click(); };
    for (QWidget* control : QWidgetList{m_text1, m_text2, m_text3, m_save})
        keys->set(control, save, quit);
    for (QWidget* control : QWidgetList{this, m_quit, m_standard, m_command2, m_combo1, m_check1,
                                        m_check2, m_check3, m_check4})
        keys->set(control, &DialogKeys::nothing, quit);
}

void frmEinstell::Form_Load()
{
    const Prefer& pref = m_shell.preferences();
    m_text1->setText(pref.HomeUrl());
    m_text2->setText(pref.SearchEngine());
    m_text3->setText(pref.MailClient());
    showHistoryRows(pref.HistoryRows());
    m_check1->setChecked(pref.StatusBar() != 0);
    m_check2->setChecked(pref.StartBrowser() != 0);
    m_check3->setChecked(pref.Adresszeile() != 0);
    m_check4->setChecked(pref.Toolbar() != 0);
}

void frmEinstell::showHistoryRows(qint16 rows)
{
    const QString text = QString::number(rows);
    m_combo1->setCurrentIndex(m_combo1->findText(text)); // where its list opens
    m_combo1->setEditText(text);
}

qint16 frmEinstell::typedHistoryRows() const
{
    try {
        return parseInt16(m_combo1->currentText());
    } catch (const OverflowError& error) {
        throw Error(error.text() +
                    QStringLiteral("\nDas Feld „Historie“ nimmt Zahlen von %1 bis %2.")
                        .arg(std::numeric_limits<qint16>::min())
                        .arg(std::numeric_limits<qint16>::max()));
    }
}

void frmEinstell::Save_Click()
{
    Prefer& pref = m_shell.preferences();
    pref.HomeUrl(m_text1->text());
    pref.SearchEngine(m_text2->text());
    pref.MailClient(m_text3->text());
    pref.StatusBar(m_check1->isChecked() ? 1 : 0);
    pref.StartBrowser(toFlag(m_check2->isChecked()));
    pref.Adresszeile(toFlag(m_check3->isChecked()));
    pref.Toolbar(toFlag(m_check4->isChecked()));
    if (!runCommand(m_shell.prompt(), this, [&] { pref.HistoryRows(typedHistoryRows()); })) {
        m_combo1->setFocus();
        return;
    }
    if (!runCommand(m_shell.prompt(), this, [&] { pref.SavePref(); }))
        return;
    m_shell.StatusBarCurr(pref.StatusBar() >= 1);
    accept();
}

void frmEinstell::Quit_Click()
{
    reject();
}

void frmEinstell::Standard_Click()
{
    m_text1->setText(Prefer::defaultHomeUrl(m_shell.programFolder()));
    m_text2->setText(Prefer::defaultSearchEngine());
    m_text3->clear();
    showHistoryRows(Prefer::defaultHistoryRows);
    for (QCheckBox* check : {m_check1, m_check2, m_check3, m_check4})
        check->setChecked(true);
}

void frmEinstell::Command2_Click()
{
    const QString name =
        m_shell.prompt().saveFileName(this, {QStringLiteral("E-Mail Anwendung auswählen..."),
                                             {},
                                             QStringLiteral("Anwendung (*.exe)|*.exe"),
                                             QStringLiteral("Alle Dateien (*)|*")});
    if (!name.isEmpty())
        m_text3->setText(name);
}
