#include "ArchiveFixture.h"
#include "bookmarks/frmBMProperty.h"

#include <QIcon>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

/// The dialog, on the first bookmark of the sample archive.
class BookmarkDialogTest : public WindowTest {
    Q_OBJECT
private slots:
    void changesAndAdds()
    {
        ArchiveFixture f;
        f.open();
        f.select(u"a1"_s);
        FakePrompt& prompt = f.shell.fakePrompt;
        frmBMProperty dialog(*f.window, prompt, QIcon(), nullptr);
        const auto setFields = [this](const QString& name, const QString& url) {
            find<QLineEdit>(u"Text1"_s)->setText(name);
            find<QLineEdit>(u"Text2"_s)->setText(url);
            find<QPlainTextEdit>(u"Text3"_s)->setPlainText(u"x\ny"_s);
        };
        const auto stored = [&f](int position) {
            const Bookmark& its = *f.window->selectedFolder()->colBookmark()->Item(position);
            return its.Titel() + u'|' + its.Url() + u'|' + its.Info();
        };
        show(dialog);
        QCOMPARE(find<QLineEdit>(u"Text1"_s)->text(), u"a1"_s);
        setFields(u"n"_s, u"http://a1"_s);
        press(u"Ok"_s); // its own address is no question
        QCOMPARE(stored(1), u"n|http://a1|x\r\ny"_s);
        f.window->Buch().IsEdit(false);

        frmBMProperty another(*f.window, prompt, QIcon(), nullptr);
        another.bNewBkm(true);
        show(another);
        setFields(u"m"_s, u""_s);
        press(u"Ok"_s);
        QCOMPARE(prompt.takeTexts(), QStringList(u"Meldung|Critical|Feld darf nicht leer sein."_s));
        setFields(u"m"_s, u"http://a2"_s);
        prompt.answerYesNo(false);
        press(u"Ok"_s);
        const QStringList question(u"Meldung|Question|Die Url: http://a2 existiert bereits, "
                                   "trotzdem übernehmen ?"_s);
        QCOMPARE(prompt.takeTexts(), question);
        QVERIFY(another.isVisible() && !f.isChanged());
        prompt.answerYesNo(true);
        QTest::keyClick(find(u"Text1"_s), Qt::Key_Return);
        QCOMPARE(prompt.takeTexts(), question);
        QCOMPARE(stored(2), u"m|http://a2|x\r\ny"_s);
    }
};

QTEST_MAIN(BookmarkDialogTest)
#include "BookmarkDialogTest.moc"
