#include "bookmarks/frmImport.h"

#include "base/DialogKeys.h"
#include "base/RunCommand.h"
#include "base/WindowParts.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

/// The list as far as a user would read it; the field takes long for more.
QString listShown(const ImportPlan& plan)
{
    constexpr qsizetype mostLines = 2000;
    const QStringList lines = plan.list().split(u'\n');
    if (lines.size() <= mostLines)
        return lines.join(u'\n');
    return lines.first(mostLines).join(u'\n') +
           u"\n… und %1 weitere Zeilen, die „Liste kopieren“ mitnimmt."_s.arg(lines.size() -
                                                                              mostLines);
}

} // namespace

frmImport::frmImport(const ImportPlan& plan, const std::function<void()>& take, Prompt& prompt,
                     QWidget* parent)
    : QDialog(parent), m_plan(plan), m_take(take), m_prompt(prompt), m_text(new QLabel(this)),
      m_list(new QPlainTextEdit(this)),
      m_ok(makeButton(u"Ok"_s, u"&Übernehmen"_s,
                      u"Legt die Ordner am Ende des Archivs an; gespeichert wird noch nicht"_s)),
      m_copy(makeButton(u"cmdCopy"_s, u"&Liste kopieren"_s, u"In die Zwischenablage"_s)),
      m_close(makeButton(u"Cancel"_s, u"Abbruch"_s))
{
    setObjectName(u"frmImport"_s);
    setWindowTitle(u"Bookmarks übernehmen"_s);
    buildControls();
    setKeys();
    connect(m_ok, &QPushButton::clicked, this, &frmImport::takeAll);
    connect(m_copy, &QPushButton::clicked, this, &frmImport::copyList);
    connect(m_close, &QPushButton::clicked, this, &frmImport::reject);
    showText(plan.question());
    const bool isAny = plan.added > 0;
    m_ok->setVisible(isAny);
    if (!isAny)
        m_close->setText(u"Schließen"_s);
    (isAny ? m_ok : m_close)->setFocus();
}

void frmImport::buildControls()
{
    constexpr int visibleColumns = 80;
    constexpr int visibleLines = 10;
    m_text->setObjectName(u"lblText"_s);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setMinimumWidth(visibleColumns * fontMetrics().averageCharWidth());
    m_list->setObjectName(u"txtList"_s);
    m_list->setAccessibleName(u"Nicht oder nicht ganz übernommene Bookmarks"_s);
    m_list->setReadOnly(true);
    m_list->setTabChangesFocus(true);
    m_list->setMinimumHeight(visibleLines * fontMetrics().lineSpacing());
    const bool hasList = !m_plan.leftOut.isEmpty() || !m_plan.changed.isEmpty();
    if (hasList)
        m_list->setPlainText(listShown(m_plan));
    m_list->setVisible(hasList);
    m_copy->setVisible(hasList);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_copy);
    buttons->addStretch();
    buttons->addWidget(m_ok);
    buttons->addWidget(m_close);
    auto* all = new QVBoxLayout(this);
    all->addWidget(m_text);
    all->addWidget(m_list, 1);
    all->addLayout(buttons);
    setTabOrder(m_list, m_copy);
    setTabOrder(m_copy, m_ok);
    setTabOrder(m_ok, m_close);
}

void frmImport::setKeys()
{
    auto* keys = new DialogKeys(this);
    const auto close = [this] { reject(); };
    for (QPushButton* const button : {m_ok, m_copy, m_close})
        keys->set(
            button, [button] { button->click(); }, close);
    for (QWidget* const control : {static_cast<QWidget*>(this), static_cast<QWidget*>(m_list)})
        keys->set(control, &DialogKeys::nothing, close);
}

void frmImport::showText(const QString& text)
{
    m_text->setText(text);
    m_text->setMinimumHeight(m_text->heightForWidth(m_text->minimumWidth()));
    for (QPushButton* const button : {m_ok, m_close})
        button->setAccessibleDescription(text);
}

void frmImport::takeAll()
{
    const bool isDone = runCommand(m_prompt, this, [this] {
        const WaitPointer wait(this);
        m_take();
    });
    if (!isDone)
        return;
    showText(m_plan.result() +
             u"\n\nSie sind noch nicht gespeichert; bis dahin nimmt Strg+Z im Archiv alles auf "
             "einmal zurück."_s);
    m_close->setText(u"Schließen"_s);
    m_close->setFocus();
    m_ok->hide();
}

void frmImport::copyList() const
{
    QGuiApplication::clipboard()->setText(m_plan.list());
}
