#include "bookmarks/frmBMProperty.h"

#include "base/DialogKeys.h"
#include "base/Prompt.h"
#include "base/RunCommand.h"
#include "base/WindowParts.h"
#include "bookmarks/ArchiveRecords.h"
#include "bookmarks/BookmarkPlace.h"
#include "bookmarks/FolderChoice.h"
#include "bookmarks/StoredTextHint.h"
#include "bookmarks/Thema.h"

#include <QGridLayout>
#include <QIcon>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QValidator>

using namespace Qt::StringLiterals;

namespace {
/// Keeps pasted line breaks out of a field of one line.
class OneLine : public QValidator {
public:
    /// `instead` takes the place of each line break.
    OneLine(const QString& instead, QObject* parent) : QValidator(parent), m_instead(instead) {}

    State validate(QString& input, int& position) const override
    {
        position = static_cast<int>(joined(input.left(position)).size());
        input = joined(input);
        return Acceptable;
    }

private:
    QString joined(QString text) const
    {
        static const QRegularExpression lineBreak(
            u"\\r\\n|[\\n\\v\\f\\r\\x{85}\\x{2028}\\x{2029}]"_s);
        return text.replace(lineBreak, m_instead);
    }

    QString m_instead;
};

QLineEdit* lineEdit(const QString& name, const QString& insteadOfBreaks)
{
    auto* edit = new QLineEdit;
    edit->setObjectName(name);
    edit->setValidator(new OneLine(insteadOfBreaks, edit));
    return edit;
}
} // namespace

frmBMProperty::frmBMProperty(BookmarkPlace& place, Prompt& prompt, const QIcon& icon,
                             QWidget* parent)
    : QDialog(parent), m_place(place), m_prompt(prompt), m_keys(new DialogKeys(this))
{
    setObjectName(u"frmBMProperty"_s);
    setWindowTitle(u"Bookmark - Eigenschaften"_s);
    setWindowIcon(icon);
    buildControls();
    setKeys();
    connect(m_ok, &QPushButton::clicked, this, &frmBMProperty::Ok_Click);
    connect(m_cancel, &QPushButton::clicked, this, &frmBMProperty::reject);
    m_text1->setFocus();
}

void frmBMProperty::buildControls()
{
    m_text1 = lineEdit(u"Text1"_s, u" "_s);
    m_text2 = lineEdit(u"Text2"_s, QString());
    m_text3 = new QPlainTextEdit;
    m_text3->setObjectName(u"Text3"_s);
    m_text3->setTabChangesFocus(true);
    constexpr int visibleColumns = 60;
    constexpr int visibleLines = 5;
    m_text1->setMinimumWidth(visibleColumns * fontMetrics().averageCharWidth());
    m_text3->setMinimumHeight((visibleLines + 1) * fontMetrics().lineSpacing());

    auto* grid = m_fields = new QGridLayout;
    addLabel(*grid, 0, u"Label1"_s, u"Name:"_s, m_text1);
    grid->addWidget(StoredTextHint::under(m_text1, titelWidth), 0, 1);
    addLabel(*grid, 1, u"Label2"_s, u"URL:"_s, m_text2);
    grid->addWidget(StoredTextHint::under(m_text2, urlWidth), 1, 1);
    addLabel(*grid, 2, u"Label3"_s, u"Beschreibung:"_s, m_text3, Qt::AlignTop);
    grid->addWidget(StoredTextHint::under(m_text3, infoWidth), 2, 1);
    grid->setRowStretch(2, 1);

    m_ok = makeButton(u"Ok"_s, u"Ok"_s);
    m_cancel = makeButton(u"Cancel"_s, u"Abbruch"_s);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_ok);
    buttons->addWidget(m_cancel);

    auto* all = new QVBoxLayout(this);
    all->addLayout(grid);
    all->addLayout(buttons);
}

void frmBMProperty::setKeys()
{
    const auto close = [this] { reject(); };
    for (QWidget* text : {m_text1, m_text2})
        m_keys->set(
            text, [this] { Ok_Click(); }, close);
    m_keys->set(m_text3, {}, close);
    m_keys->set(
        m_ok, [this] { store(&frmBMProperty::StoreChangedBookmark); }, close);
    for (QWidget* control : {static_cast<QWidget*>(this), static_cast<QWidget*>(m_cancel)})
        m_keys->set(control, &DialogKeys::nothing, close);
}

void frmBMProperty::offerFolders(ChosenFolder& place, const QString& first)
{
    m_folders = new FolderChoice(place, first, this, *m_fields);
    m_folders->followInTabOrder(m_text3);
    m_folders->setKeys(
        *m_keys, [this] { Ok_Click(); }, [this] { reject(); });
    m_folders->watch(*m_text2);
}

void frmBMProperty::showEvent(QShowEvent* event)
{
    runCommand(m_prompt, this, [this] { Form_Load(); });
    QDialog::showEvent(event);
}

void frmBMProperty::Form_Load()
{
    if (m_isLoaded)
        return;
    m_isLoaded = true;
    if (m_isNew) {
        setWindowTitle(u"Bookmark - Hinzufügen"_s);
        m_text2->setText(u"http://"_s);
        return;
    }
    m_bookmark = m_place.selectedBookmark();
    if (m_bookmark)
        fill(*m_bookmark);
}

void frmBMProperty::TakeBookmark(const Bookmark& bookmark)
{
    Form_Load();
    fill(bookmark);
}

void frmBMProperty::fill(const Bookmark& bookmark)
{
    m_text1->setText(bookmark.Titel());
    m_text2->setText(bookmark.Url());
    m_text3->setPlainText(bookmark.Info());
    for (QLineEdit* text : {m_text1, m_text2})
        text->setCursorPosition(0); // a long text is to show its beginning
}

void frmBMProperty::Ok_Click()
{
    if (!IsInputComplete()) {
        m_prompt.tell(this, u"Feld darf nicht leer sein."_s, u"Meldung"_s, Prompt::Icon::Critical);
        (m_text1->text().isEmpty() ? m_text1 : m_text2)->setFocus();
        return;
    }
    if (m_folders != nullptr && !m_folders->isGood(m_prompt))
        return;
    const auto accepted = [this] {
        return !m_isNew || IsUrlNew() ||
               m_prompt.askYesNo(this,
                                 u"Die Url: "_s + m_text2->text() +
                                     u" existiert bereits, trotzdem übernehmen ?"_s,
                                 u"Meldung"_s, Prompt::Icon::Question);
    };
    if (accepted())
        store(m_isNew ? &frmBMProperty::StoreNewBookmark : &frmBMProperty::StoreChangedBookmark);
}

bool frmBMProperty::IsInputComplete() const
{
    return !m_text1->text().isEmpty() && !m_text2->text().isEmpty();
}

bool frmBMProperty::IsUrlNew() const
{
    const auto folder = m_place.selectedFolder();
    return !folder || !folder->holds(m_text2->text());
}

void frmBMProperty::StoreNewBookmark()
{
    m_place.AddBkmToArchive(m_text1->text(), m_text2->text(), info());
}

void frmBMProperty::StoreChangedBookmark()
{
    m_place.UpdateBookmark(m_bookmark, m_text1->text(), m_text2->text(), info());
}

void frmBMProperty::store(void (frmBMProperty::*how)())
{
    if (runCommand(m_prompt, this, [this, how] { (this->*how)(); }))
        accept();
}

QString frmBMProperty::info() const
{
    // Not toPlainText(): that turns non-breaking blanks into ordinary ones.
    QString text = m_text3->document()->toRawText();
    for (const QChar lineBreak : {QChar::ParagraphSeparator, QChar::LineSeparator})
        text.replace(lineBreak, u"\r\n"_s);
    return text;
}
