#include "ArchiveFixture.h"
#include "bookmarks/frmBMProperty.h"

#include <QIcon>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

/// The dialog, on the first bookmark of the sample archive.
class BookmarkDialogTest : public WindowTest {
    Q_OBJECT
private slots:
    void init()
    {
        TestCase::init();
        m_archive = std::make_unique<ArchiveFixture>();
        m_archive->open();
        m_archive->select(u"a1"_s);
    }
    void cleanup()
    {
        m_dialog.reset();
        m_archive.reset();
    }

    void edits()
    {
        open(false);
        QCOMPARE(find<QLineEdit>(u"Text1"_s)->text(), u"a1"_s);
        setFields(u"n"_s, u"http://a1"_s, u"x\ny"_s);
        press(u"Ok"_s); // its own address is no question
        QCOMPARE(stored(1), u"n|http://a1|x\r\ny"_s);
        open(false);
        press(u"Ok"_s);
        QCOMPARE(stored(1), u"n|http://a1|x\r\ny"_s);
    }

    void confirms()
    {
        FakePrompt& prompt = m_archive->shell.fakePrompt;
        open(true);
        setFields(u"n"_s, u""_s, u"x\ny"_s);
        press(u"Ok"_s);
        QCOMPARE(prompt.takeTexts(), QStringList(u"Meldung|Critical|Feld darf nicht leer sein."_s));
        setFields(u"n"_s, u"http://a2"_s, u"x\ny"_s);
        prompt.answerYesNo(false);
        press(u"Ok"_s);
        const QStringList question(u"Meldung|Question|Die Url: http://a2 existiert bereits, "
                                   "trotzdem übernehmen ?"_s);
        QCOMPARE(prompt.takeTexts(), question);
        QVERIFY(m_dialog->isVisible() && !m_archive->isChanged());
        prompt.answerYesNo(true);
        QTest::keyClick(find(u"Text1"_s), Qt::Key_Return);
        QCOMPARE(prompt.takeTexts(), question);
        QCOMPARE(stored(2), u"n|http://a2|x\r\ny"_s);
    }

private:
    void open(bool isNew)
    {
        m_dialog = std::make_unique<frmBMProperty>(*m_archive->window, m_archive->shell.fakePrompt,
                                                   QIcon(), nullptr);
        m_dialog->bNewBkm(isNew);
        show(*m_dialog);
    }
    void setFields(const QString& name, const QString& url, const QString& info)
    {
        find<QLineEdit>(u"Text1"_s)->setText(name);
        find<QLineEdit>(u"Text2"_s)->setText(url);
        find<QPlainTextEdit>(u"Text3"_s)->setPlainText(info);
    }
    QString stored(int position) const
    {
        const Bookmark& its = *m_archive->window->selectedFolder()->colBookmark()->Item(position);
        return its.Titel() + u'|' + its.Url() + u'|' + its.Info();
    }

    std::unique_ptr<ArchiveFixture> m_archive;
    std::unique_ptr<frmBMProperty> m_dialog;
};

GUI_TEST_MAIN(BookmarkDialogTest)
#include "BookmarkDialogTest.moc"
