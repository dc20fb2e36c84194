#include "app/frmEinstell.h"
#include "tests/gui/FakeShell.h"
#include "tests/gui/GuiTest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

class PreferencesDialogTest : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        failOnWarnings();
        m_shell = std::make_unique<FakeShell>();
        m_shell->pref.HomeUrl(u"http://home/"_s);
        m_shell->pref.MailClient(u"/usr/bin/mail"_s);
        m_shell->pref.HistoryRows(-3);
        m_shell->pref.StatusBar(0);
        m_shell->pref.Toolbar(0);
        m_dialog = std::make_unique<frmEinstell>(*m_shell, nullptr);
        m_dialog->show();
        m_dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    }

    void cleanup()
    {
        m_dialog.reset();
        m_shell.reset();
    }

    void showsThePreferences()
    {
        QCOMPARE(m_dialog->windowTitle(), u"Einstellungen"_s);
        QCOMPARE(fields(), u"http://home/|https://duckduckgo.com/|/usr/bin/mail|-3|0110"_s);
        QString order;
        for (int i = 0; i < 12; ++i) {
            order += m_dialog->focusWidget()->objectName() + u' ';
            QTest::keyClick(m_dialog->focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(order, u"Text1 Text2 Text3 Command2 Combo1 Check2 Check1 Check3 Check4 Standard "
                        "Save Quit "_s);
    }

    void standardSavesNothing()
    {
        press(u"Standard"_s);
        QCOMPARE(fields(),
                 m_shell->programFolder() + u"\\Lizenz.txt|https://duckduckgo.com/||50|1111"_s);
        press(u"Quit"_s);
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_shell->pref.HomeUrl(), u"http://home/"_s);
        QCOMPARE(int{m_shell->pref.HistoryRows()}, -3);
    }

    void keys_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<bool>("saves");
        for (const char* name : {"Text1", "Text3", "Save"})
            QTest::newRow(name) << QString::fromLatin1(name) << true;
        for (const char* name : {"Quit", "Command2", "Combo1", "Check4"})
            QTest::newRow(name) << QString::fromLatin1(name) << false;
    }
    void keys()
    {
        QFETCH(QString, control);
        QFETCH(bool, saves);
        auto* widget = find<QWidget>(control);
        setHistoryRows(u"7"_s);
        QTest::keyClick(widget, Qt::Key_Enter);
        QCOMPARE(m_dialog->isVisible(), !saves);
        QCOMPARE(int{m_shell->pref.HistoryRows()}, saves ? 7 : -3);
        m_dialog->show();
        find<QLineEdit>(u"Text1"_s)->setText(u"other"_s);
        QTest::keyClick(widget, Qt::Key_Escape);
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_shell->pref.HomeUrl(), u"http://home/"_s);
    }

    void saves()
    {
        m_shell->statusBarCurr = false;
        find<QLineEdit>(u"Text1"_s)->setText(u" a "_s + QString(300, u'x'));
        find<QCheckBox>(u"Check1"_s)->setChecked(true);
        find<QCheckBox>(u"Check2"_s)->setChecked(false);
        find<QCheckBox>(u"Check4"_s)->setChecked(true);
        setHistoryRows(u" 7,5 "_s);
        press(u"Save"_s);
        const Prefer& pref = m_shell->pref;
        QVERIFY(!m_dialog->isVisible());
        QVERIFY(m_shell->statusBarCurr);
        QCOMPARE(pref.HomeUrl(), u" a "_s + QString(300, u'x'));
        QCOMPARE(int{pref.HistoryRows()}, 8);
        QCOMPARE(int{pref.StatusBar()}, 1);
        QCOMPARE(int{pref.StartBrowser()}, 0);
        QCOMPARE(int{pref.Adresszeile()}, -1);
        QCOMPARE(int{pref.Toolbar()}, -1);
        Prefer stored(m_shell->programFolder());
        stored.LoadPref();
        QCOMPARE(int{stored.HistoryRows()}, 8);
    }

    void wrongHistorySize_data()
    {
        QTest::addColumn<QString>("rows");
        QTest::addColumn<QString>("message");
        QTest::newRow("empty") << u""_s << u"'' ist keine Zahl."_s;
        QTest::newRow("word") << u"abc"_s << u"'abc' ist keine Zahl."_s;
    }
    void wrongHistorySize()
    {
        QFETCH(QString, rows);
        QFETCH(QString, message);
        setHistoryRows(rows);
        saveFailing(message);
        QVERIFY(find<QComboBox>(u"Combo1"_s)->hasFocus());
        QCOMPARE(int{m_shell->pref.HistoryRows()}, -3);
    }

    void fileThatCannotBeWritten()
    {
        const QString file = m_shell->programFolder() + u"/Pref.tsp"_s;
        QVERIFY(QFile::remove(file) && QDir().mkdir(file)); // even root cannot write a folder
        setHistoryRows(u"9"_s);
        saveFailing(u"Die Datei '"_s);
        QCOMPARE(int{m_shell->pref.HistoryRows()}, 9);
    }

    void looksForTheMailProgram()
    {
        for (const QString& answer : {QString(), u"/opt/My Mail/mail"_s}) {
            m_shell->fakePrompt.answerFileName(answer);
            press(u"Command2"_s);
            QCOMPARE(m_shell->fakePrompt.takeTexts(),
                     QStringList(u"E-Mail Anwendung auswählen...||"
                                 "Anwendung (*.exe)|*.exe|Alle Dateien (*)|*"_s));
            QCOMPARE(find<QLineEdit>(u"Text3"_s)->text(),
                     answer.isEmpty() ? u"/usr/bin/mail"_s : answer);
        }
        QVERIFY(m_dialog->isVisible());
    }

private:
    template <typename Widget>
    Widget* find(const QString& name) const
    {
        return m_dialog->findChild<Widget*>(name);
    }
    void press(const QString& name) { QTest::mouseClick(find<QWidget>(name), Qt::LeftButton); }
    void setHistoryRows(const QString& text) { find<QComboBox>(u"Combo1"_s)->setEditText(text); }
    /// Presses "OK": what comes before the failure stays in force, what comes
    /// behind it does not happen.
    void saveFailing(const QString& message)
    {
        find<QLineEdit>(u"Text2"_s)->setText(u"http://search/"_s);
        find<QCheckBox>(u"Check1"_s)->setChecked(true);
        press(u"Save"_s);
        const QString told = m_shell->fakePrompt.takeTexts().join(u'/');
        QVERIFY2(told.startsWith(u"Meldung|Exclamation|"_s + message), qPrintable(told));
        QVERIFY(m_dialog->isVisible());
        QCOMPARE(m_shell->pref.SearchEngine(), u"http://search/"_s);
        QCOMPARE(int{m_shell->pref.StatusBar()}, 1);
        QVERIFY(!m_shell->statusBarCurr);
    }
    QString fields() const
    {
        QStringList texts;
        for (const QString& name : {u"Text1"_s, u"Text2"_s, u"Text3"_s})
            texts.append(find<QLineEdit>(name)->text());
        texts.append(find<QComboBox>(u"Combo1"_s)->currentText());
        QString checks;
        for (const QString& name : {u"Check1"_s, u"Check2"_s, u"Check3"_s, u"Check4"_s})
            checks += find<QCheckBox>(name)->isChecked() ? u'1' : u'0';
        return texts.join(u'|') + u'|' + checks;
    }

    std::unique_ptr<FakeShell> m_shell;
    std::unique_ptr<frmEinstell> m_dialog;
};

GUI_TEST_MAIN(PreferencesDialogTest)
#include "PreferencesDialogTest.moc"
