#include "bookmarks/BookSelection.h"
#include "bookmarks/Thema.h"
#include "bookmarks/frmBMProperty.h"
#include "tests/gui/FakePrompt.h"
#include "tests/gui/GuiTest.h"

#include <QClipboard>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

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
        if (fails)
            throw OverflowError();
    }
    void UpdateBookmark(const std::shared_ptr<Bookmark>& which, const QString& title,
                        const QString& url, const QString& info) override
    {
        const QString whose = !which ? u"none"_s : which == bookmark ? u"selected"_s : u"opened"_s;
        stored.append(u"%1|%2|%3|%4"_s.arg(whose, title, url, info));
    }

    std::shared_ptr<Thema> folder = std::make_shared<Thema>(QString());
    std::shared_ptr<Bookmark> bookmark;
    QStringList stored;
    bool fails = false;
};

std::shared_ptr<Bookmark> newBookmark(const QString& info)
{
    auto bookmark = std::make_shared<Bookmark>();
    bookmark->Titel(u"Name"_s);
    bookmark->Url(u"http://h/Page"_s);
    bookmark->Info(info);
    return bookmark;
}
} // namespace

class BookmarkDialogTest : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        failOnWarnings();
        m_archive = std::make_unique<FakeArchive>();
        m_archive->bookmark = newBookmark(u"a\r\n\r\nb\u00a0c"_s);
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

    void opensForTheSelectedBookmark()
    {
        open(false);
        QCOMPARE(m_dialog->windowTitle(), u"Bookmark - Eigenschaften"_s);
        QCOMPARE(fields(), u"Name|http://h/Page|a\n\nb c"_s);
        for (const auto& [label, field] : {std::pair{u"Label1"_s, u"Text1"_s},
                                           {u"Label2"_s, u"Text2"_s},
                                           {u"Label3"_s, u"Text3"_s}})
            QCOMPARE(find<QLabel>(label)->buddy(), find<QWidget>(field));
        QString order;
        for (int i = 0; i < 5; ++i) {
            order += m_dialog->focusWidget()->objectName() + u' ';
            QTest::keyClick(m_dialog->focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(order, u"Text1 Text2 Text3 Ok Cancel "_s);
        // Neither lent texts nor another selection change what is edited.
        m_dialog->TakeBookmark(*m_archive->bookmark);
        m_archive->bookmark = newBookmark(u""_s);
        press(u"Ok"_s);
        QCOMPARE(m_archive->stored, QStringList(u"opened|Name|http://h/Page|a\r\n\r\nb\u00a0c"_s));
        QVERIFY(!m_dialog->isVisible());
    }

    void keys_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<bool>("isNew");
        QTest::addColumn<QString>("stored");
        QTest::newRow("name") << u"Text1"_s << true << u"add|n|u|"_s;
        QTest::newRow("address") << u"Text2"_s << true << u"add|n|u|"_s;
        QTest::newRow("description") << u"Text3"_s << true << u""_s;
        QTest::newRow("Cancel") << u"Cancel"_s << true << u""_s;
        QTest::newRow("Ok") << u"Ok"_s << true << u"none|n|u|"_s;
        QTest::newRow("Ok, edit") << u"Ok"_s << false << u"selected|n|u|"_s;
    }
    void keys()
    {
        QFETCH(QString, control);
        QFETCH(bool, isNew);
        QFETCH(QString, stored);
        for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
            open(isNew);
            setFields(u"n"_s, u"u"_s, u""_s);
            QTest::keyClick(find<QWidget>(control), key);
            const bool stores = key != Qt::Key_Escape && !stored.isEmpty();
            QCOMPARE(m_archive->stored, stores ? QStringList(stored) : QStringList());
            QCOMPARE(m_dialog->isVisible(), key != Qt::Key_Escape && stored.isEmpty());
            const bool breaks = control == u"Text3"_s && key != Qt::Key_Escape;
            QCOMPARE(find<QPlainTextEdit>(u"Text3"_s)->toPlainText(), breaks ? u"\n"_s : u""_s);
            m_archive->stored.clear();
        }
    }

    void confirms_data()
    {
        QTest::addColumn<bool>("isNew");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("focus"); // empty: complete
        QTest::addColumn<bool>("known");
        const QString page = u"http://h/Page"_s;
        QTest::newRow("no name") << true << u""_s << u"u"_s << u"Text1"_s << false;
        QTest::newRow("no address") << true << u"n"_s << u""_s << u"Text2"_s << false;
        QTest::newRow("neither, edit") << false << u""_s << u""_s << u"Text1"_s << false;
        QTest::newRow("blanks") << true << u" "_s << u" "_s << u""_s << false;
        QTest::newRow("prefilled") << true << u"n"_s << u"http://"_s << u""_s << false;
        QTest::newRow("300") << true << QString(300, u'n') << QString(300, u'u') << u""_s << false;
        QTest::newRow("known") << true << u"n"_s << page << u""_s << true;
        QTest::newRow("known, edit") << false << u"n"_s << page << u""_s << false;
        QTest::newRow("other case") << true << u"n"_s << page.toLower() << u""_s << false;
    }
    void confirms()
    {
        QFETCH(bool, isNew);
        QFETCH(QString, name);
        QFETCH(QString, url);
        QFETCH(QString, focus);
        QFETCH(bool, known);
        open(isNew);
        setFields(name, url, u"x\ny"_s);
        if (known)
            m_prompt->answerYesNo(false);
        press(u"Ok"_s);
        const QString question = u"Meldung|Question|Die Url: http://h/Page existiert bereits, "
                                 "trotzdem übernehmen ?"_s;
        const QString message = u"Meldung|Critical|Feld darf nicht leer sein."_s;
        if (known || !focus.isEmpty()) {
            QCOMPARE(m_prompt->takeTexts(), QStringList(known ? question : message));
            QVERIFY(m_dialog->isVisible() && m_archive->stored.isEmpty());
            QVERIFY(focus.isEmpty() || m_dialog->focusWidget()->objectName() == focus);
            QCOMPARE(fields(), name + u'|' + url + u"|x\ny"_s);
        }
        if (known) {
            m_prompt->answerYesNo(true);
            press(u"Ok"_s);
            QCOMPARE(m_prompt->takeTexts(), QStringList(question));
        } else if (!focus.isEmpty()) { // Enter on the button does not look
            QTest::keyClick(find<QWidget>(u"Ok"_s), Qt::Key_Return);
        }
        QVERIFY(!m_dialog->isVisible());
        const QString how = !isNew ? u"selected"_s : focus.isEmpty() ? u"add"_s : u"none"_s;
        QCOMPARE(m_archive->stored, QStringList(u"%1|%2|%3|x\r\ny"_s.arg(how, name, url)));
    }

    void failingArchiveKeepsTheDialogOpen()
    {
        m_archive->fails = true;
        open(true);
        setFields(u"n"_s, u"u"_s, u""_s);
        press(u"Ok"_s);
        QCOMPARE(m_prompt->takeTexts(),
                 QStringList(u"Meldung|Exclamation|"_s + OverflowError().text()));
        QVERIFY(m_dialog->isVisible());
    }

    void pastedLineBreaks()
    {
        open(true);
        setFields(u""_s, u""_s, u""_s);
        for (const QString& name : {u"Text1"_s, u"Text2"_s, u"Text3"_s}) {
            QGuiApplication::clipboard()->setText(u"a\r\nb\u2028c\n"_s);
            QTest::keyClick(find<QWidget>(name), Qt::Key_V, Qt::ControlModifier);
            QTest::keyClicks(find<QWidget>(name), u"d"_s); // the cursor stays behind the text
        }
        press(u"Ok"_s);
        QCOMPARE(m_archive->stored, QStringList(u"add|a b c d|abcd|a\r\nb\r\nc\r\nd"_s));
    }

private:
    void make(bool isNew)
    {
        m_dialog = std::make_unique<frmBMProperty>(*m_archive, *m_prompt, QIcon(), nullptr);
        m_dialog->bNewBkm(isNew);
    }
    void open(bool isNew)
    {
        make(isNew);
        m_dialog->show();
        m_dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
        if (isNew) {
            QCOMPARE(m_dialog->windowTitle(), u"Bookmark - Hinzufügen"_s);
            QCOMPARE(fields(), u"|http://|"_s);
        }
    }
    template <typename Widget>
    Widget* find(const QString& name) const
    {
        return m_dialog->findChild<Widget*>(name);
    }
    void press(const QString& name) { QTest::mouseClick(find<QWidget>(name), Qt::LeftButton); }
    void setFields(const QString& name, const QString& url, const QString& info)
    {
        find<QLineEdit>(u"Text1"_s)->setText(name);
        find<QLineEdit>(u"Text2"_s)->setText(url);
        find<QPlainTextEdit>(u"Text3"_s)->setPlainText(info);
    }
    QString fields() const
    {
        return find<QLineEdit>(u"Text1"_s)->text() + u'|' + find<QLineEdit>(u"Text2"_s)->text() +
               u'|' + find<QPlainTextEdit>(u"Text3"_s)->toPlainText();
    }

    std::unique_ptr<FakeArchive> m_archive;
    std::unique_ptr<FakePrompt> m_prompt;
    std::unique_ptr<frmBMProperty> m_dialog;
};

GUI_TEST_MAIN(BookmarkDialogTest)
#include "BookmarkDialogTest.moc"
