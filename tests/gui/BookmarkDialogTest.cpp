#include "bookmarks/BookSelection.h"
#include "bookmarks/frmBMProperty.h"
#include "tests/core/SampleArchive.h"
#include "tests/gui/FakePrompt.h"
#include "tests/gui/GuiTest.h"

#include <QIcon>
#include <QLineEdit>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

namespace {
/// An archive that only keeps what it is told.
class FakeArchive : public BookSelection {
public:
    std::shared_ptr<Thema> selectedFolder() const override { return folder; }
    std::shared_ptr<Bookmark> selectedBookmark() const override { return bookmark; }
    void AddBkmToArchive(const QString& title, const QString& url, const QString& info) override
    {
        stored.append(u"add|%1|%2|%3"_s.arg(title, url, info));
    }
    void UpdateBookmark(const std::shared_ptr<Bookmark>& which, const QString& title,
                        const QString& url, const QString& info) override
    {
        stored.append(u"%1|%2|%3|%4"_s.arg(which ? u"edit"_s : u"none"_s, title, url, info));
    }

    std::shared_ptr<Thema> folder = std::make_shared<Thema>(QString());
    std::shared_ptr<Bookmark> bookmark;
    QStringList stored;
};
} // namespace

class BookmarkDialogTest : public WindowTest {
    Q_OBJECT
private slots:
    void init()
    {
        TestCase::init();
        m_archive = std::make_unique<FakeArchive>();
        m_archive->bookmark = makeBookmark(1, u"Name"_s, u"http://h/Page"_s, u"a\r\nb"_s);
        auto bookmarks = std::make_shared<BookmarkCollection>();
        bookmarks->Add(m_archive->bookmark);
        m_archive->folder->colBookmark(bookmarks);
        m_prompt = std::make_unique<FakePrompt>();
    }
    void cleanup()
    {
        m_dialog.reset();
        m_prompt.reset();
    }

    void edits()
    {
        open(false);
        QCOMPARE(find<QLineEdit>(u"Text1"_s)->text(), u"Name"_s);
        press(u"Ok"_s); // its own address is no question
        QCOMPARE(m_archive->stored, QStringList(u"edit|Name|http://h/Page|a\r\nb"_s));
    }

    void confirms()
    {
        open(true);
        setFields(u"n"_s, u""_s, u"x\ny"_s);
        press(u"Ok"_s);
        QCOMPARE(m_prompt->takeTexts(),
                 QStringList(u"Meldung|Critical|Feld darf nicht leer sein."_s));
        setFields(u"n"_s, u"http://h/Page"_s, u"x\ny"_s);
        m_prompt->answerYesNo(false);
        press(u"Ok"_s);
        const QStringList question(u"Meldung|Question|Die Url: http://h/Page existiert bereits, "
                                   "trotzdem übernehmen ?"_s);
        QCOMPARE(m_prompt->takeTexts(), question);
        QVERIFY(m_dialog->isVisible() && m_archive->stored.isEmpty());
        m_prompt->answerYesNo(true);
        QTest::keyClick(find(u"Text1"_s), Qt::Key_Return);
        QCOMPARE(m_prompt->takeTexts(), question);
        QCOMPARE(m_archive->stored, QStringList(u"add|n|http://h/Page|x\r\ny"_s));
    }

private:
    void open(bool isNew)
    {
        m_dialog = std::make_unique<frmBMProperty>(*m_archive, *m_prompt, QIcon(), nullptr);
        m_dialog->bNewBkm(isNew);
        show(*m_dialog);
    }
    void setFields(const QString& name, const QString& url, const QString& info)
    {
        find<QLineEdit>(u"Text1"_s)->setText(name);
        find<QLineEdit>(u"Text2"_s)->setText(url);
        find<QPlainTextEdit>(u"Text3"_s)->setPlainText(info);
    }

    std::unique_ptr<FakeArchive> m_archive;
    std::unique_ptr<FakePrompt> m_prompt;
    std::unique_ptr<frmBMProperty> m_dialog;
};

GUI_TEST_MAIN(BookmarkDialogTest)
#include "BookmarkDialogTest.moc"
