#include "app/frmEinstell.h"
#include "tests/gui/FakeShell.h"
#include "tests/gui/GuiTest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>

using namespace Qt::StringLiterals;

class PreferencesDialogTest : public WindowTest {
    Q_OBJECT
private slots:
    void init()
    {
        TestCase::init();
        m_dialog.reset(); // before its shell
        m_shell = std::make_unique<FakeShell>();
        m_shell->pref.HomeUrl(u"http://home/"_s);
        m_shell->pref.HistoryRows(-3);
        m_shell->pref.StatusBar(0);
        m_dialog = std::make_unique<frmEinstell>(*m_shell, nullptr);
        show(*m_dialog);
    }

    void standardSavesNothing()
    {
        auto* home = find<QLineEdit>(u"Text1"_s);
        QCOMPARE(home->text(), u"http://home/"_s);
        press(u"Standard"_s);
        QCOMPARE(home->text(), m_shell->programFolder() + u"\\Lizenz.txt"_s);
        QCOMPARE(find<QComboBox>(u"Combo1"_s)->currentText(), u"50"_s);
        QTest::keyClick(home, Qt::Key_Escape);
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_shell->pref.HomeUrl(), u"http://home/"_s);
    }

    void saves()
    {
        m_shell->statusBarCurr = false;
        find<QCheckBox>(u"Check1"_s)->setChecked(true);
        setHistoryRows(u" 7,5 "_s);
        QTest::keyClick(find<QComboBox>(u"Combo1"_s), Qt::Key_Enter); // chooses, no more
        QVERIFY(m_dialog->isVisible());
        QTest::keyClick(find<QLineEdit>(u"Text1"_s), Qt::Key_Enter);
        QVERIFY(!m_dialog->isVisible());
        QVERIFY(m_shell->statusBarCurr);
        QCOMPARE(int{m_shell->pref.HistoryRows()}, 8);
        Prefer stored(m_shell->programFolder());
        stored.LoadPref();
        QCOMPARE(int{stored.StatusBar()}, 1);
    }

    void whatCannotBeSaved()
    {
        setHistoryRows(u"abc"_s);
        saveFailing(u"'abc' ist keine Zahl."_s);
        QVERIFY(find<QComboBox>(u"Combo1"_s)->hasFocus());
        QCOMPARE(int{m_shell->pref.HistoryRows()}, -3);
        setHistoryRows(u"32768"_s);
        saveFailing(u"Überlauf: Die Zahl ist zu groß.\n"
                    "Das Feld „Historie“ nimmt Zahlen von -32768 bis 32767."_s);
        const QComboBox* rows = find<QComboBox>(u"Combo1"_s);
        QVERIFY(rows->lineEdit()->width() > rows->fontMetrics().horizontalAdvance(u"-32768"_s));
        const QString file = m_shell->programFolder() + u"/Pref.tsp"_s;
        QVERIFY(QFile::remove(file) && QDir().mkdir(file)); // even root cannot write a folder
        setHistoryRows(u"9"_s);
        saveFailing(u"Die Datei '"_s);
        QCOMPARE(int{m_shell->pref.HistoryRows()}, 9);
    }

private:
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
    std::unique_ptr<FakeShell> m_shell;
    std::unique_ptr<frmEinstell> m_dialog;
};

QTEST_MAIN(PreferencesDialogTest)
#include "PreferencesDialogTest.moc"
